#import "sheet_cover.h"

#include <Block.h>

#import "alert_box.h"
#import "ns_alert.h"

@interface SheetCover (Showing)
- (BOOL)isCritical;
- (void)show;
@end

namespace {

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

/// The work of a page or of a completion handler may block the main thread right after this.
void drawNow(NSWindow* window) {
    [window display];
    [window flushWindow];
}

/// nil for what is part of the page.
SheetCover* coverAround(NSView* view) {
    while (view && ![view isKindOfClass:[SheetCover class]]) {
        view = [view superview];
    }
    return static_cast<SheetCover*>(view);
}

}  // namespace

/// The page behind a sheet may change, but cannot take the keys away from it.
@implementation NSButton (Complement)

- (BOOL)resignFirstResponder {
    if ([coverAround(self) keepsFocus]) {
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

+ (void)beginSheet:(CompletedAlert*)alert
             onWindow:(NSWindow*)window
    completionHandler:(AlertCompletionHandler)handler {
    NSView* page = [window contentView];
    SheetCover* cover = [[SheetCover alloc] initWithFrame:[page frame] alert:alert handler:handler];
    [[page superview] addSubview:cover];
    [cover release];
    showNextSheet(window);
}

- (instancetype)initWithFrame:(NSRect)frame
                        alert:(CompletedAlert*)alert
                      handler:(AlertCompletionHandler)handler {
    self = [super initWithFrame:frame];
    if (self) {
        _alert = [alert retain];
        _handler = Block_copy(handler);
        [self setAutoresizingMask:NSViewWidthSizable | NSViewHeightSizable];
        [self setHidden:YES];
    }
    return self;
}

- (void)dealloc {
    [_focusBefore release];
    [_box release];
    Block_release(_handler);
    [_alert release];
    [super dealloc];
}

- (BOOL)isCritical {
    return [_alert alertStyle] == NSCriticalAlertStyle;
}

#pragma mark Beginning and end

- (void)show {
    NSWindow* window = [self window];
    [[NSNotificationCenter defaultCenter] postNotificationName:NSWindowWillBeginSheetNotification
                                                        object:window];
    _focusBefore = [[window firstResponder] retain];
    _box = [[AlertBox alloc] initWithAlert:_alert target:self action:@selector(answered:)];
    const NSSize room = [self bounds].size;
    const NSSize size = [_box frame].size;
    [_box setFrameOrigin:NSMakePoint(floor((room.width - size.width) / 2),
                                     floor((room.height - size.height) / 2))];
    [_box setAutoresizingMask:NSViewMinXMargin | NSViewMaxXMargin | NSViewMinYMargin |
                              NSViewMaxYMargin];
    [self addSubview:_box];
    [[self superview] addSubview:self];
    [self setHidden:NO];
    [window makeFirstResponder:[[_alert buttons] objectAtIndex:0]];
    drawNow(window);
}

/// What had the keys before has them again, if it is still there.
- (void)returnFocusIn:(NSWindow*)window {
    if ([_focusBefore isKindOfClass:[NSView class]] &&
        [static_cast<NSView*>(_focusBefore) window] == window) {
        [window makeFirstResponder:_focusBefore];
    }
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
    if (_handler) {
        _handler([button tag]);
    }
    [self removeFromSuperview];
    [self returnFocusIn:window];
    [[NSNotificationCenter defaultCenter] postNotificationName:NSWindowDidEndSheetNotification
                                                        object:window];
    showNextSheet(window);
    drawNow(window);
}

#pragma mark Events

- (BOOL)keepsFocus {
    return [SheetCover coverOfWindow:[self window]] == self && !_movesFocus && !_answered;
}

- (BOOL)acceptsFirstMouse:(NSEvent*)event {
    return YES;
}

- (void)mouseDown:(NSEvent*)event {
}

- (void)rightMouseDown:(NSEvent*)event {
}

- (void)scrollWheel:(NSEvent*)event {
}

/// What the focused control has no use for arrives here.
- (void)keyDown:(NSEvent*)event {
    NSString* key = [event charactersIgnoringModifiers];
    const BOOL back = [key isEqualToString:@"\x19"] || ([event modifierFlags] & NSShiftKeyMask);
    if (![key isEqualToString:@"\t"] && ![key isEqualToString:@"\x19"]) {
        [_box takeKey:event];
        return;
    }
    _movesFocus = YES;
    back ? [[self window] selectPreviousKeyView:self] : [[self window] selectNextKeyView:self];
    _movesFocus = NO;
}

#pragma mark Drawing

- (void)drawRect:(NSRect)rect {
    [[NSColor colorWithCalibratedWhite:0 alpha:0.28] set];
    NSRectFillUsingOperation(rect, NSCompositeSourceOver);
}

@end
