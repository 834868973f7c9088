#import <AppKit/AppKit.h>

@implementation NSProgressIndicator (Complement)

/// GNUstep draws in no thread of its own: an indicator that was told to would stand still. A timer
/// of the run loop turns it instead.
- (void)setUsesThreadedAnimation:(BOOL)threaded {
}

@end
