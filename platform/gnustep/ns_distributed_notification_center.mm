#import <Foundation/Foundation.h>

@implementation NSDistributedNotificationCenter (Complement)

/// GNUstep's display backend takes its leave here when the application ends, and its own method
/// would start a daemon for that. The daemon forgets an observer by itself when the connection
/// ends.
- (void)removeObserver:(id)observer {
}

@end
