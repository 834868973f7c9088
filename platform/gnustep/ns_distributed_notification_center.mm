#import <Foundation/Foundation.h>

/// No other application has news for the installer, and none waits for its own. GNUstep's methods
/// start a daemon that outlives it, and run the run loop until that answers: the display backend
/// calls them on the first click, which then came after the clicks that were made meanwhile.
@implementation NSDistributedNotificationCenter (Complement)

- (void)addObserver:(id)observer
              selector:(SEL)selector
                  name:(NSString*)name
                object:(NSString*)object
    suspensionBehavior:(NSNotificationSuspensionBehavior)behavior {
}

- (void)removeObserver:(id)observer name:(NSString*)name object:(NSString*)object {
}

- (void)postNotificationName:(NSString*)name
                      object:(NSString*)object
                    userInfo:(NSDictionary*)info
          deliverImmediately:(BOOL)immediately {
}

@end
