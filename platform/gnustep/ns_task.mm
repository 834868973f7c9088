#include <poll.h>
#include <unistd.h>

#include <csignal>
#include <vector>

// This header does not say that it is C.
extern "C" {
#include <sys/pidfd.h>
}

#include <glib.h>

#import <AppKit/AppKit.h>

namespace {

constexpr int animationInterval = 80;  // milliseconds

/// Where the stand-in for a tool of macOS lies; any other tool's own path.
NSString* standInFor(NSString* tool) {
    return
        [tool isEqualToString:@"/usr/bin/ditto"]
            ? [[[NSBundle mainBundle] bundlePath] stringByAppendingPathComponent:@"Helpers/ditto"]
            : tool;
}

/// What was set as an output is a pipe; -1 if nothing was.
int descriptor(NSPipe* output) {
    return output ? [[output fileHandleForWriting] fileDescriptor] : -1;
}

/// Runs in the child.
void restoreSignals(gpointer /*data*/) {
    static_cast<void>(std::signal(SIGXFSZ, SIG_DFL));
}

}  // namespace

/// On macOS an indicator can turn in a thread of its own while the main thread waits.
@implementation NSProgressIndicator (Turning)

+ (void)animateIn:(NSView*)view {
    for (NSView* subview in [view isHidden] ? nil : [view subviews]) {
        [self animateIn:subview];
    }
    if ([view isKindOfClass:self] && ![view isHidden]) {
        auto* indicator = static_cast<NSProgressIndicator*>(view);
        if (indicator->_isRunning) {
            [indicator animate:nil];
            [indicator display];
        }
    }
}

/// Takes every visible indicator that turns one step further, on the screen too.
+ (void)animateVisible {
    for (NSWindow* window in [NSApp windows]) {
        if ([window isVisible]) {
            // A sheet lies beside the content.
            [self animateIn:[[window contentView] superview]];
            [window flushWindow];
        }
    }
}

@end

/// What every task is an instance of.
@interface NSConcreteUnixTask : NSTask
@end

@implementation NSConcreteUnixTask (Complement)

/// Raises an exception if the child cannot be started, as on macOS. GNUstep's own child then ends
/// in a way that takes down what it shares with its parent; and it stays where it is if it is told
/// to work in a folder that is not there. Standard input and an environment of its own are not
/// offered.
- (void)launch {
    NSString* path = standInFor([self launchPath]);
    std::vector<char*> arguments = {const_cast<char*>([path UTF8String])};
    for (NSString* argument in [self arguments]) {
        arguments.push_back(const_cast<char*>([argument UTF8String]));
    }
    arguments.push_back(nullptr);
    GError* reason = nullptr;
    g_spawn_async_with_pipes_and_fds(
        [_currentDirectoryPath UTF8String], arguments.data(), nullptr, G_SPAWN_DO_NOT_REAP_CHILD,
        restoreSignals, nullptr, -1, descriptor(_standardOutput), descriptor(_standardError),
        nullptr, nullptr, 0, &_taskId, nullptr, nullptr, nullptr, &reason);
    if (reason) {
        NSString* text = [NSString stringWithUTF8String:reason->message];
        g_error_free(reason);
        [NSException raise:NSInvalidArgumentException
                    format:@"“%@” could not be started: %@.", path, text];
    }
    _hasLaunched = YES;
    // Only the child's own copies keep a reader from seeing the end. One pipe may serve both.
    [[_standardOutput fileHandleForWriting] closeFile];
    if (_standardError != _standardOutput) {
        [[_standardError fileHandleForWriting] closeFile];
    }
}

/// GNUstep's own looks ten times a second. Nothing of the run loop runs meanwhile; only what turns
/// goes on turning.
- (void)waitUntilExit {
    pollfd child = {pidfd_open(_taskId, 0), POLLIN, 0};
    while ([self isRunning]) {
        [NSProgressIndicator animateVisible];
        poll(&child, 1, animationInterval);
    }
    close(child.fd);
}

@end
