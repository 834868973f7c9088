#include <cerrno>
#include <sys/wait.h>

/// Where the stand-in for a tool of macOS lies; nil if there is none.
static NSString *standInFor(NSString *tool) {
    if (![tool isEqualToString:@"/usr/bin/ditto"]) {
        return nil;
    }
    return [[[NSBundle mainBundle] bundlePath] stringByAppendingPathComponent:@"Helpers/ditto"];
}

@implementation NSTask (Complement)

/// What is really run; GNUstep raises an exception if this gives nil.
- (NSString *)validatedLaunchPath {
    NSString *standIn = standInFor([self launchPath]);
    NSString *path = standIn ? standIn : [self launchPath];
    return [[NSFileManager defaultManager] isExecutableFileAtPath:path] ? path : nil;
}

/// GNUstep's own looks ten times a second.
- (void)waitUntilExit {
    while ([self isRunning]) {
        siginfo_t ended;
        // Only waits: `isRunning` takes the status.
        waitid(P_PID, static_cast<id_t>([self processIdentifier]), &ended, WEXITED | WNOWAIT);
    }
}

@end
