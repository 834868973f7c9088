#import "app/MorvellaInstallerAppDelegate.h"

@implementation MorvellaInstallerAppDelegate

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
}

- (void)applicationWillTerminate:(NSNotification*)notification {
}

- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)sender {
    return YES;
}

@end
