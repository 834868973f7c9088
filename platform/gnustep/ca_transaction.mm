#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSDisplayServer.h>
#import <QuartzCore/QuartzCore.h>

@implementation CATransaction

+ (void)flush {
    [[NSApp windows] makeObjectsPerformSelector:@selector(displayIfNeeded)];
    [[NSApp windows] makeObjectsPerformSelector:@selector(flushWindow)];
    // The display server replies only after it has drawn everything sent before.
    [GSCurrentServer() mouselocation];
}

@end
