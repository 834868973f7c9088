#import "ns_application.h"

#import "ns_event.h"
#import "sheet_cover.h"

namespace {

constexpr NSTimeInterval longestSleep = 0.05;

}  // namespace

@implementation CompletedApplication

/// The desktop's own list of windows stands for GNUstep's window with the application's icon.
- (void)_appIconInit {
}

/// The page behind a sheet takes no commands; the main menu does.
- (void)sendEvent:(NSEvent*)event {
    event = [NSEvent watched:event];
    if (!event) {
        return;
    }
    if ([event type] == NSKeyDown && ([event modifierFlags] & NSCommandKeyMask) &&
        [SheetCover coverOfWindow:[event window]]) {
        [[self mainMenu] performKeyEquivalent:event];
    } else {
        [super sendEvent:event];
    }
}

/// GNUstep goes to sleep now and then although a click waits in its queue, and sleeps on until
/// something else happens: for half a minute if nothing does.
- (NSEvent*)eventMatchingMask:(NSUInteger)mask
                    untilDate:(NSDate*)date
                       inMode:(NSString*)mode
                      dequeue:(BOOL)dequeue {
    NSEvent* event = nil;
    do {
        NSDate* wakeUp = [NSDate dateWithTimeIntervalSinceNow:longestSleep];
        event = [super nextEventMatchingMask:mask
                                   untilDate:date ? [wakeUp earlierDate:date] : nil
                                      inMode:mode
                                     dequeue:dequeue];
    } while (!event && [date timeIntervalSinceNow] > 0);
    return event;
}

/// GNUstep hands out the first of quick clicks the wrong way round, so that a control waits for a
/// release that it has missed.
- (NSEvent*)nextEventMatchingMask:(NSUInteger)mask
                        untilDate:(NSDate*)date
                           inMode:(NSString*)mode
                          dequeue:(BOOL)dequeue {
    NSEvent* event = [self eventMatchingMask:mask untilDate:date inMode:mode dequeue:dequeue];
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
