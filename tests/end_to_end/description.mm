#import "description.h"

#import <GNUstepGUI/GSDisplayServer.h>

#include <objc/runtime.h>

#include <cstring>

namespace {

NSString* text(NSString* string) {
    return string ? string : @"";
}

/// Counted from the upper left corner of the window's content.
NSArray* frameOf(NSView* view) {
    const NSRect frame = [view convertRect:[view bounds] toView:nil];
    const NSRect content = [[[view window] contentView] frame];
    return @[
        @(NSMinX(frame) - NSMinX(content)), @(NSMaxY(content) - NSMaxY(frame)), @(NSWidth(frame)),
        @(NSHeight(frame))
    ];
}

/// Of the window's content and of the menu above it.
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

NSDictionary* describeButton(NSButton* button) {
    const BOOL isFirst = [[button window] firstResponder] == button;
    return @{
        @"title" : text([button title]),
        @"state" : @([button state]),
        @"enabled" : @([button isEnabled] != NO),
        @"hidden" : @([button isHiddenOrHasHiddenAncestor] != NO),
        @"pressed" : @([[button cell] isHighlighted] != NO),
        @"focused" : @(isFirst != NO),
        @"key" : text([button keyEquivalent]),
        @"ticks" : @([[button cell] showsStateBy] != NSNoCellMask),
        @"frame" : frameOf(button)
    };
}

NSDictionary* describeIndicator(NSProgressIndicator* indicator) {
    return @{
        @"hidden" : @([indicator isHiddenOrHasHiddenAncestor] != NO),
        @"running" : @(variableOf<BOOL>(indicator, "_isRunning") != NO),
        @"spinning" : @([indicator style] == NSProgressIndicatorSpinningStyle),
        @"indeterminate" : @([indicator isIndeterminate] != NO),
        @"frame" : frameOf(indicator)
    };
}

NSDictionary* describeDocument(NSTextView* view) {
    return @{
        @"text" : text([view string]),
        @"editable" : @([view isEditable] != NO),
        @"focused" : @([[view window] firstResponder] == view),
        @"frame" : frameOf(view)
    };
}

/// What lies in a view, at any depth.
class Contents {
  public:
    explicit Contents(NSView* view) { add(view); }

    [[nodiscard]] NSDictionary* describe() const {
        return @{
            @"texts" : texts_,
            @"controls" : controls_,
            @"indicators" : indicators_,
            @"documents" : documents_
        };
    }

    [[nodiscard]] NSArray* texts() const { return texts_; }

  private:
    void add(NSView* view) {
        if ([view isKindOfClass:[NSButton class]]) {
            [controls_ addObject:describeButton(static_cast<NSButton*>(view))];
        } else if ([view isKindOfClass:[NSTextField class]]) {
            addText(static_cast<NSTextField*>(view));
        } else if ([view isKindOfClass:[NSProgressIndicator class]]) {
            [indicators_ addObject:describeIndicator(static_cast<NSProgressIndicator*>(view))];
        } else if ([view isKindOfClass:[NSTextView class]]) {
            [documents_ addObject:describeDocument(static_cast<NSTextView*>(view))];
        } else if (!isNamed(view, @"StepsSidebar")) {
            for (NSView* subview in [view subviews]) {
                add(subview);
            }
        }
    }

    void addText(NSTextField* field) {
        if (![field isHiddenOrHasHiddenAncestor] && [[field stringValue] length] > 0) {
            [texts_ addObject:@{@"text" : [field stringValue], @"frame" : frameOf(field)}];
        }
    }

    NSMutableArray* texts_ = [NSMutableArray array];
    NSMutableArray* controls_ = [NSMutableArray array];
    NSMutableArray* indicators_ = [NSMutableArray array];
    NSMutableArray* documents_ = [NSMutableArray array];
};

NSArray* describeAll(NSArray* buttons) {
    NSMutableArray* all = [NSMutableArray array];
    for (NSButton* button in buttons) {
        [all addObject:describeButton(button)];
    }
    return all;
}

/// The alert as it was asked for, and what of it is on the screen.
NSDictionary* describeSheet(NSView* cover) {
    NSAlert* alert = variableOf<NSAlert*>(cover, "_alert");
    NSButton* tickBox = [alert showsSuppressionButton] ? [alert suppressionButton] : nil;
    NSView* accessory = [alert accessoryView];
    return @{
        @"message" : text([alert messageText]),
        @"informative" : text([alert informativeText]),
        @"style" : @([alert alertStyle]),
        @"buttons" : describeAll([alert buttons]),
        @"help" : @([alert showsHelp] != NO),
        @"box" : tickBox ? describeButton(tickBox) : [NSNull null],
        @"accessory" : accessory ? Contents(accessory).describe() : [NSNull null],
        @"shown" : Contents(cover).describe()
    };
}

/// The uppermost one comes last.
NSArray* describeSheets(NSWindow* window) {
    NSMutableArray* sheets = [NSMutableArray array];
    for (NSView* cover in [[[window contentView] superview] subviews]) {
        if (isNamed(cover, @"SheetCover") && ![cover isHidden]) {
            [sheets addObject:describeSheet(cover)];
        }
    }
    return sheets;
}

/// Each text in it; a picture has an empty one.
NSArray* describeSidebar(NSView* view) {
    if (isNamed(view, @"StepsSidebar")) {
        NSMutableArray* parts = [NSMutableArray array];
        for (NSView* part in [view subviews]) {
            const BOOL isText = [part isKindOfClass:[NSTextField class]];
            [parts addObject:isText ? [static_cast<NSTextField*>(part) stringValue] : @""];
        }
        return parts;
    }
    for (NSView* subview in [view subviews]) {
        NSArray* found = describeSidebar(subview);
        if (found) {
            return found;
        }
    }
    return nil;
}

NSString* nameOf(NSResponder* responder) {
    return [responder isKindOfClass:[NSButton class]] ? [static_cast<NSButton*>(responder) title]
                                                      : NSStringFromClass([responder class]);
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
    NSArray* sidebar = describeSidebar([window contentView]);
    NSMutableDictionary* state =
        [NSMutableDictionary dictionaryWithDictionary:Contents([window contentView]).describe()];
    [state addEntriesFromDictionary:@{
        @"window" : @(device),
        @"title" : text([window title]),
        @"visible" : @([window isVisible] != NO),
        @"height" : @(heightOf(window)),
        @"size" : frameOf([window contentView]),
        @"key" : @([window isKeyWindow] != NO),
        @"miniaturized" : @([window isMiniaturized] != NO),
        @"focus" : text(nameOf([window firstResponder])),
        @"sidebar" : sidebar ? sidebar : @[],
        @"sheets" : describeSheets(window)
    }];
    return state;
}
