#pragma once

#import <AppKit/AppKit.h>

@interface MorvellaInstallerAppDelegate : NSObject <NSApplicationDelegate>
@end
