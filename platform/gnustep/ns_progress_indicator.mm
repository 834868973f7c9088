#import "ns_progress_indicator.h"

@interface NSProgressIndicator (Animation)
- (void)animateIfRunning;
@end

namespace {

void animateIn(NSView* view) {
    if ([view isHidden]) {
        return;
    }
    if ([view isKindOfClass:[NSProgressIndicator class]]) {
        [static_cast<NSProgressIndicator*>(view) animateIfRunning];
    }
    for (NSView* subview in [view subviews]) {
        animateIn(subview);
    }
}

}  // namespace

@implementation NSProgressIndicator (Complement)

+ (void)animateVisible {
    for (NSWindow* window in [NSApp windows]) {
        if ([window isVisible]) {
            // A sheet lies beside the content.
            animateIn([[window contentView] superview]);
            [window flushWindow];
        }
    }
}

- (void)animateIfRunning {
    if (_isRunning) {
        [self animate:nil];
        [self display];
    }
}

@end
