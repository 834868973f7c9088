#import "description.h"

#import <GNUstepGUI/GSDisplayServer.h>

#include <objc/runtime.h>

#include <cstring>

namespace {

NSString* text(NSString* string) {
    return string ? string : @"";
}

NSArray* listOf(NSRect frame) {
    return @[ @(NSMinX(frame)), @(NSMinY(frame)), @(NSWidth(frame)), @(NSHeight(frame)) ];
}

/// Measured from the upper left corner of the window's content.
NSRect frameOf(NSView* view) {
    NSRect frame = [view convertRect:[view bounds] toView:nil];
    const NSRect content = [[[view window] contentView] frame];
    frame.origin = NSMakePoint(NSMinX(frame) - NSMinX(content), NSMaxY(content) - NSMaxY(frame));
    return frame;
}

/// The height of the window's content and the menu above it.
CGFloat heightOf(NSWindow* window) {
    CGFloat height = NSHeight([[window contentView] frame]);
    for (NSView* view in [[[window contentView] superview] subviews]) {
        if ([view isKindOfClass:[NSMenuView class]]) {
            height += NSHeight([view frame]);
        }
    }
    return height;
}

template <typename Value>
Value variableOf(id object, const char* name) {
    Value value{};
    const Ivar variable = class_getInstanceVariable(object_getClass(object), name);
    if (variable) {
        std::memcpy(&value, reinterpret_cast<char*>(object) + ivar_getOffset(variable),
                    sizeof(value));
    }
    return value;
}

BOOL isNamed(NSView* view, NSString* name) {
    return [NSStringFromClass([view class]) isEqualToString:name];
}

NSDictionary* describeControl(NSButton* button) {
    return @{
        @"title" : text([button title]),
        @"ticked" : @([button state] == NSOnState),
        @"enabled" : @([button isEnabled] != NO),
        @"hidden" : @([button isHiddenOrHasHiddenAncestor] != NO),
        @"pressed" : @([[button cell] isHighlighted] != NO),
        @"focused" : @([[button window] firstResponder] == button),
        @"key" : text([button keyEquivalent]),
        @"is_box" : @([[button cell] showsStateBy] != NSNoCellMask),
        @"frame" : listOf(frameOf(button))
    };
}

NSDictionary* describeIndicator(NSProgressIndicator* indicator) {
    return @{
        @"hidden" : @([indicator isHiddenOrHasHiddenAncestor] != NO),
        @"turning" : @(variableOf<BOOL>(indicator, "_isRunning") != NO),
        @"spinner" :
            @([indicator style] == NSProgressIndicatorSpinningStyle && [indicator isIndeterminate]),
        @"frame" : listOf(frameOf(indicator))
    };
}

/// The texts, buttons and indicators in a view, at any depth.
class Contents {
  public:
    explicit Contents(NSView* view) { add(view); }

    [[nodiscard]] NSDictionary* describe() const {
        NSMutableArray* controls = [NSMutableArray array];
        for (NSButton* button in buttons_) {
            [controls addObject:describeControl(button)];
        }
        return @{@"texts" : texts_, @"controls" : controls, @"indicators" : indicators_};
    }

    [[nodiscard]] NSButton* buttonTitled(NSString* title) const {
        for (NSButton* button in buttons_) {
            if ([[button title] isEqualToString:title]) {
                return button;
            }
        }
        return nil;
    }

  private:
    void add(NSView* view) {
        if ([view isKindOfClass:[NSButton class]]) {
            [buttons_ addObject:view];
        } else if ([view isKindOfClass:[NSTextField class]]) {
            addText(static_cast<NSTextField*>(view));
        } else if ([view isKindOfClass:[NSProgressIndicator class]]) {
            [indicators_ addObject:describeIndicator(static_cast<NSProgressIndicator*>(view))];
        } else if (!isNamed(view, @"StepsSidebar")) {
            for (NSView* subview in [view subviews]) {
                add(subview);
            }
        }
    }

    void addText(NSTextField* field) {
        if (![field isHiddenOrHasHiddenAncestor] && [[field stringValue] length] > 0) {
            [texts_ addObject:@{@"text" : [field stringValue], @"frame" : listOf(frameOf(field))}];
        }
    }

    NSMutableArray* texts_ = [NSMutableArray array];
    NSMutableArray* buttons_ = [NSMutableArray array];
    NSMutableArray* indicators_ = [NSMutableArray array];
};

/// The uppermost one comes last.
NSArray* sheetsOf(NSWindow* window) {
    NSMutableArray* sheets = [NSMutableArray array];
    for (NSView* cover in [[[window contentView] superview] subviews]) {
        if (isNamed(cover, @"SheetCover") && ![cover isHidden]) {
            [sheets addObject:cover];
        }
    }
    return sheets;
}

NSArray* describeSheets(NSWindow* window) {
    NSMutableArray* sheets = [NSMutableArray array];
    for (NSView* cover in sheetsOf(window)) {
        NSAlert* alert = variableOf<NSAlert*>(cover, "_alert");
        [sheets addObject:@{
            @"message" : text([alert messageText]),
            @"critical" : @([alert alertStyle] == NSCriticalAlertStyle),
            @"shown" : Contents(cover).describe()
        }];
    }
    return sheets;
}

NSWindow* installerWindow() {
    for (NSWindow* window in [NSApp windows]) {
        if ([window isMemberOfClass:[NSWindow class]] &&
            ([window styleMask] & NSTitledWindowMask)) {
            return window;
        }
    }
    return nil;
}

}  // namespace

NSDictionary* describeWindow() {
    NSWindow* window = installerWindow();
    if (!window) {
        return @{};
    }
    const auto device = reinterpret_cast<unsigned long>(
        [GSServerForWindow(window) windowDevice:static_cast<int>([window windowNumber])]);
    return @{
        @"window" : @(device),
        @"title" : text([window title]),
        @"visible" : @([window isVisible] != NO),
        @"height" : @(heightOf(window)),
        @"size" : listOf(frameOf([window contentView])),
        @"key" : @([window isKeyWindow] != NO),
        @"page" : Contents([window contentView]).describe(),
        @"sheets" : describeSheets(window)
    };
}

NSButton* buttonTitled(NSString* title) {
    NSWindow* window = installerWindow();
    NSView* sheet = [sheetsOf(window) lastObject];
    return Contents(sheet ? sheet : [window contentView]).buttonTitled(title);
}
