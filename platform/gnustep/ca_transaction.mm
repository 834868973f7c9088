#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSDisplayServer.h>
#import <QuartzCore/QuartzCore.h>

@implementation CATransaction

+ (void)flush {
    for (NSWindow* window in [NSApp windows]) {
        if ([window isVisible]) {
            [window displayIfNeeded];
            [window flushWindow];
        }
    }
    // The display server answers this question only after it has drawn what it was sent before.
    [GSCurrentServer() mouselocation];
}

@end
