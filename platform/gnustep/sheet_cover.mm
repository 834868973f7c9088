#import "sheet_cover.h"

#include <Block.h>

#include <algorithm>

@interface SheetCover (Showing)
- (BOOL)isCritical;
- (BOOL)keepsFocus;
- (void)show;
@end

namespace {

constexpr CGFloat boxWidth = 460;
constexpr CGFloat boxTop = 140;
constexpr CGFloat margin = 20;
constexpr CGFloat gap = 12;
constexpr CGFloat iconSize = 56;
constexpr CGFloat textLeft = margin + iconSize + 16;
constexpr CGFloat buttonHeight = 28;
constexpr CGFloat buttonWidth = 88;

void showNextSheet(NSWindow* window) {
    SheetCover* next = nil;
    for (SheetCover* cover in [[[window contentView] superview] subviews]) {
        if ([cover isKindOfClass:[SheetCover class]] && [cover isHidden] &&
            (!next || ([cover isCritical] && ![next isCritical]))) {
            next = cover;
        }
    }
    SheetCover* shown = [SheetCover coverOfWindow:window];
    if (next && (!shown || ([next isCritical] && ![shown isCritical]))) {
        [next show];
    }
}

void drawNow(NSWindow* window) {
    [window display];
    [window flushWindow];
}

NSTextField* label(NSString* text, NSFont* font) {
    NSTextField* field = [[[NSTextField alloc] init] autorelease];
    [field setStringValue:text];
    [field setFont:font];
    [field setEditable:NO];
    [field setSelectable:NO];
    [field setBezeled:NO];
    [field setDrawsBackground:NO];
    return field;
}

/// An alert's contents from top to bottom, without icon and buttons.
NSArray* contentsOf(NSAlert* alert) {
    NSMutableArray* views = [NSMutableArray array];
    [views addObject:label([alert messageText], [NSFont boldSystemFontOfSize:13])];
    if ([[alert informativeText] length] > 0) {
        [views addObject:label([alert informativeText], [NSFont systemFontOfSize:12])];
    }
    if ([alert showsSuppressionButton]) {
        [[alert suppressionButton] setFont:[NSFont systemFontOfSize:12]];
        [views addObject:[alert suppressionButton]];
    }
    for (NSControl* control in views) {
        constexpr CGFloat width = boxWidth - margin - textLeft;
        [[control cell] setWraps:YES];
        const NSSize size = [[control cell] cellSizeForBounds:NSMakeRect(0, 0, width, 10000)];
        [control setFrameSize:NSMakeSize(width, ceil(size.height))];
    }
    if ([alert accessoryView]) {
        [views addObject:[alert accessoryView]];
    }
    return views;
}

}  // namespace

/// A page that changes behind a sheet must not take the focus from the sheet's button.
@implementation NSButton (Complement)

- (BOOL)resignFirstResponder {
    NSView* cover = [self superview];
    if ([cover isKindOfClass:[SheetCover class]] && [static_cast<SheetCover*>(cover) keepsFocus]) {
        return NO;
    }
    [[self cell] setShowsFirstResponder:NO];
    [self setNeedsDisplay:YES];
    return YES;
}

@end

@implementation SheetCover

+ (SheetCover*)coverOfWindow:(NSWindow*)window {
    NSArray* views = [[[window contentView] superview] subviews];
    for (NSView* view in [views reverseObjectEnumerator]) {
        if ([view isKindOfClass:[SheetCover class]] && ![view isHidden]) {
            return static_cast<SheetCover*>(view);
        }
    }
    return nil;
}

+ (void)beginSheet:(NSAlert*)alert
             onWindow:(NSWindow*)window
    completionHandler:(AlertCompletionHandler)handler {
    NSView* page = [window contentView];
    SheetCover* cover = [[[SheetCover alloc] initWithFrame:[page frame]] autorelease];
    cover->_alert = [alert retain];
    cover->_handler = Block_copy(handler);
    [cover setHidden:YES];
    [[page superview] addSubview:cover];
    showNextSheet(window);
}

- (void)dealloc {
    [_focusBefore release];
    Block_release(_handler);
    [_alert release];
    [super dealloc];
}

- (BOOL)isFlipped {
    return YES;
}

- (BOOL)isCritical {
    return [_alert alertStyle] == NSCriticalAlertStyle;
}

#pragma mark Contents

- (void)add:(NSView*)view at:(NSPoint)place {
    [view setFrameOrigin:NSMakePoint(NSMinX(_box) + place.x, NSMinY(_box) + place.y)];
    [self addSubview:view];
}

- (void)addIcon {
    const NSRect frame = NSMakeRect(0, 0, iconSize, iconSize);
    NSImageView* icon = [[[NSImageView alloc] initWithFrame:frame] autorelease];
    [icon setImage:[self isCritical] ? [NSImage imageNamed:@"AlertCaution"]
                                     : [NSApp applicationIconImage]];
    [icon setImageScaling:NSImageScaleProportionallyUpOrDown];
    [self add:icon at:NSMakePoint(margin, margin)];
}

/// From right to left; the help button, which does nothing here, is in the left corner.
- (void)addButtonsAt:(CGFloat)top {
    CGFloat right = boxWidth - margin;
    for (NSButton* button in [_alert buttons]) {
        const CGFloat width = std::max(buttonWidth, [[button cell] cellSize].width + 24);
        [button setBezelStyle:NSRoundedBezelStyle];
        [button setTarget:self];
        [button setAction:@selector(answered:)];
        [button setFrameSize:NSMakeSize(width, buttonHeight)];
        [self add:button at:NSMakePoint(right - width, top)];
        right -= width + gap;
    }
    if ([_alert showsHelp]) {
        const NSRect frame = NSMakeRect(0, 0, buttonHeight, buttonHeight);
        NSButton* help = [[[NSButton alloc] initWithFrame:frame] autorelease];
        [help setBezelStyle:NSRoundedBezelStyle];
        [help setTitle:@"?"];
        [self add:help at:NSMakePoint(margin, top)];
    }
}

- (void)addContents {
    _box = NSMakeRect(floor((NSWidth([self bounds]) - boxWidth) / 2), boxTop, boxWidth, 0);
    [self addIcon];
    CGFloat top = margin;
    for (NSView* view in contentsOf(_alert)) {
        [self add:view at:NSMakePoint(textLeft, top)];
        top = NSMaxY([view frame]) - NSMinY(_box) + gap;
    }
    top = std::max(top - gap, margin + iconSize) + margin;
    [self addButtonsAt:top];
    _box.size.height = top + buttonHeight + margin;
    [self closeKeyViewLoop];
}

/// Tab follows the order in which the controls were added.
- (void)closeKeyViewLoop {
    NSView* first = nil;
    NSView* last = nil;
    for (NSView* view in [self subviews]) {
        if ([view acceptsFirstResponder]) {
            first = first ? first : view;
            [last setNextKeyView:view];
            last = view;
        }
    }
    [last setNextKeyView:first];
}

- (void)drawRect:(NSRect)rect {
    [[NSColor colorWithCalibratedWhite:0 alpha:0.28] set];
    NSRectFillUsingOperation(rect, NSCompositeSourceOver);
    [[NSColor windowBackgroundColor] set];
    [[NSBezierPath bezierPathWithRoundedRect:_box xRadius:10 yRadius:10] fill];
}

#pragma mark Beginning and end

- (void)show {
    NSWindow* window = [self window];
    [[NSNotificationCenter defaultCenter] postNotificationName:NSWindowWillBeginSheetNotification
                                                        object:window];
    _focusBefore = [[window firstResponder] retain];
    [self addContents];
    [[self superview] addSubview:self];
    [self setHidden:NO];
    [window makeFirstResponder:[[_alert buttons] objectAtIndex:0]];
    drawNow(window);
}

- (void)answered:(NSButton*)button {
    if (_answered) {
        return;
    }
    _answered = YES;
    [[self retain] autorelease];
    NSWindow* window = [self window];
    [button highlight:NO];
    drawNow(window);
    _handler([button tag]);
    [self removeFromSuperview];
    if ([_focusBefore isKindOfClass:[NSView class]] && [(NSView*)_focusBefore window] == window) {
        [window makeFirstResponder:_focusBefore];
    }
    [[NSNotificationCenter defaultCenter] postNotificationName:NSWindowDidEndSheetNotification
                                                        object:window];
    showNextSheet(window);
    drawNow(window);
}

#pragma mark Events

/// Whether the sheet's focused control must keep the focus.
- (BOOL)keepsFocus {
    return [SheetCover coverOfWindow:[self window]] == self && !_movesFocus && !_answered;
}

/// Keys the focused control did not handle.
- (void)keyDown:(NSEvent*)event {
    NSString* key = [event charactersIgnoringModifiers];
    const BOOL isBackTab = [key isEqualToString:@"\x19"];
    if (isBackTab || [key isEqualToString:@"\t"]) {
        _movesFocus = YES;
        isBackTab || ([event modifierFlags] & NSShiftKeyMask)
            ? [[self window] selectPreviousKeyView:self]
            : [[self window] selectNextKeyView:self];
        _movesFocus = NO;
        return;
    }
    key = [key isEqualToString:@"\x03"] ? @"\r" : key;
    for (NSButton* button in [_alert buttons]) {
        if ([key length] > 0 && [[button keyEquivalent] isEqualToString:key] &&
            !([button keyEquivalentModifierMask] & NSCommandKeyMask)) {
            [button performClick:self];
            return;
        }
    }
}

@end
