#import <AppKit/AppKit.h>

@implementation NSProgressIndicator (Complement)

/// GNUstep does not animate in a thread, so a timer animates the indicator instead.
- (void)setUsesThreadedAnimation:(BOOL)threaded {
}

@end
