#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSDisplayServer.h>
#import <QuartzCore/QuartzCore.h>

@implementation CATransaction

+ (void)flush {
    [[NSApp windows] makeObjectsPerformSelector:@selector(displayIfNeeded)];
    [[NSApp windows] makeObjectsPerformSelector:@selector(flushWindow)];
    // The display server answers this question only after it has drawn what it was sent before.
    [GSCurrentServer() mouselocation];
}

@end
