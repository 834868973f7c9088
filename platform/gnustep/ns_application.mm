#import "ns_application.h"

#import "ns_event.h"
#import "sheet_cover.h"

@implementation CompletedApplication

/// GNUstep would show a window with the application's icon.
- (void)_appIconInit {
}

/// GNUstep offers a key to every button in the window first. While a sheet is up, only the sheet
/// and the main menu get keys.
- (void)sendEvent:(NSEvent*)event {
    event = [NSEvent watched:event];
    if (!event) {
        return;
    }
    if ([event type] != NSKeyDown || ![SheetCover coverOfWindow:[event window]]) {
        [super sendEvent:event];
    } else if ([event modifierFlags] & NSCommandKeyMask) {
        [[self mainMenu] performKeyEquivalent:event];
    } else {
        [[[event window] firstResponder] keyDown:event];
    }
}

/// GNUstep sometimes sleeps with a click in its queue until another event arrives.
- (NSEvent*)nextEventMatchingMask:(NSUInteger)mask
                        untilDate:(NSDate*)date
                           inMode:(NSString*)mode
                          dequeue:(BOOL)dequeue {
    constexpr NSTimeInterval longestSleep = 0.05;
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

@end
