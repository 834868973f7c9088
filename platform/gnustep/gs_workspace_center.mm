#import <Foundation/Foundation.h>

/// Through this, GNUstep's workspace tells other applications that this one runs, and hears from
/// them.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the name is GNUstep's.
@interface _GSWorkspaceCenter : NSNotificationCenter
@end

/// Nobody waits for the installer's news, and telling them takes a daemon and a file that outlive
/// it.
@implementation _GSWorkspaceCenter (Complement)

- (instancetype)init {
    return [super init];
}

- (void)postNotification:(NSNotification*)notification {
    [super postNotification:notification];
}

- (void)postNotificationName:(NSString*)name object:(id)object {
    [super postNotificationName:name object:object];
}

- (void)postNotificationName:(NSString*)name object:(id)object userInfo:(NSDictionary*)info {
    [super postNotificationName:name object:object userInfo:info];
}

@end
