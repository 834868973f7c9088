#import <AppKit/AppKit.h>

@implementation NSProgressIndicator (Complement)

/// GNUstep draws in no thread, so the indicator would stand still. A timer turns it instead.
- (void)setUsesThreadedAnimation:(BOOL)threaded {
}

@end
