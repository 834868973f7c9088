#import <GNUstepGUI/GSServicesManager.h>

/// GNUstep's applications offer and look for services of others, through files in the account's
/// home and a connection that other applications find by name. The installer does neither.
@implementation GSServicesManager (Complement)

+ (GSServicesManager*)newWithApplication:(NSApplication*)application {
    return nil;
}

@end
