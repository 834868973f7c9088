#import <AppKit/AppKit.h>

static const NSTimeInterval deadline = 20;

/// Whether the process has an ordinary window on the screen.
static BOOL hasWindow(pid_t process) {
    NSArray* windows = [(NSArray*)CGWindowListCopyWindowInfo(kCGWindowListOptionOnScreenOnly,
                                                             kCGNullWindowID) autorelease];
    for (NSDictionary* window in windows) {
        const pid_t owner = [[window objectForKey:(NSString*)kCGWindowOwnerPID] intValue];
        const int layer = [[window objectForKey:(NSString*)kCGWindowLayer] intValue];
        if (owner == process && layer == 0) {
            return YES;
        }
    }
    return NO;
}

/// Asks the application to quit, as the Dock does. Returns NO until the system knows the process.
static BOOL askToQuit(pid_t process) {
    return [[NSRunningApplication runningApplicationWithProcessIdentifier:process] terminate];
}

/// Usage: application window|quit PID
int main(int argc, const char* argv[]) {
    @autoreleasepool {
        if (argc != 3) {
            return 2;
        }
        const BOOL quits = [@"quit" isEqualToString:[NSString stringWithUTF8String:argv[1]]];
        const pid_t process = (pid_t)[[NSString stringWithUTF8String:argv[2]] intValue];
        NSDate* end = [NSDate dateWithTimeIntervalSinceNow:deadline];
        while ([end timeIntervalSinceNow] > 0) {
            if (quits ? askToQuit(process) : hasWindow(process)) {
                return 0;
            }
            [[NSRunLoop currentRunLoop] runUntilDate:[NSDate dateWithTimeIntervalSinceNow:0.1]];
        }
    }
    return 1;
}
