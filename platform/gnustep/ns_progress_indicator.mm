#import "ns_progress_indicator.h"

@implementation NSProgressIndicator (Complement)

+ (void)animateIn:(NSView*)view {
    for (NSView* subview in [view isHidden] ? nil : [view subviews]) {
        [self animateIn:subview];
    }
    if ([view isKindOfClass:self] && ![view isHidden]) {
        auto* indicator = static_cast<NSProgressIndicator*>(view);
        if (indicator->_isRunning) {
            [indicator animate:nil];
            [indicator display];
        }
    }
}

+ (void)animateVisible {
    for (NSWindow* window in [NSApp windows]) {
        if ([window isVisible]) {
            // A sheet lies beside the content.
            [self animateIn:[[window contentView] superview]];
            [window flushWindow];
        }
    }
}

@end
