#import "ns_application.h"

#import "sheet_cover.h"

@implementation CompletedApplication

/// The desktop's own list of windows stands for GNUstep's window with the application's icon.
- (void)_appIconInit {
}

/// The keys of a window that has a sheet belong to the sheet; the main menu keeps its own.
- (void)sendEvent:(NSEvent*)event {
    SheetCover* cover =
        [event type] == NSKeyDown ? [SheetCover existingCoverOfWindow:[event window]] : nil;
    if (!cover) {
        [super sendEvent:event];
    } else if ([event modifierFlags] & NSCommandKeyMask) {
        [[self mainMenu] performKeyEquivalent:event];
    } else {
        [cover keyDown:event];
    }
}

/// What the main menu sends to whoever has the keys does not reach the page behind a sheet either.
- (id)targetForAction:(SEL)action to:(id)target from:(id)sender {
    id found = [super targetForAction:action to:target from:sender];
    const BOOL behindSheet = !target && [found isKindOfClass:[NSView class]] &&
                             [SheetCover existingCoverOfWindow:[found window]];
    return behindSheet ? nil : found;
}

/// GNUstep hands out the first of quick clicks the wrong way round, so that a control waits for a
/// release that it has missed.
- (NSEvent*)nextEventMatchingMask:(NSUInteger)mask
                        untilDate:(NSDate*)date
                           inMode:(NSString*)mode
                          dequeue:(BOOL)dequeue {
    NSEvent* event = [super nextEventMatchingMask:mask untilDate:date inMode:mode dequeue:dequeue];
    if (!dequeue) {
        return event;
    }
    if ([event type] == NSLeftMouseUp && !_pressed && (mask & NSLeftMouseDownMask)) {
        NSEvent* press = [super nextEventMatchingMask:NSLeftMouseDownMask
                                            untilDate:[NSDate distantPast]
                                               inMode:mode
                                              dequeue:YES];
        if (press) {
            [self postEvent:event atStart:YES];
            event = press;
        }
    }
    if ([event type] == NSLeftMouseDown || [event type] == NSLeftMouseUp) {
        _pressed = [event type] == NSLeftMouseDown;
    }
    return event;
}

@end
