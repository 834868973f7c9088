#include <poll.h>
#include <spawn.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <vector>

// This header does not say that it is C.
extern "C" {
#include <sys/pidfd.h>
}

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

/// What was set as an output is a pipe.
void sendTo(NSPipe* output, int descriptor, posix_spawn_file_actions_t* start) {
    if (output) {
        const int end = [[output fileHandleForWriting] fileDescriptor];
        posix_spawn_file_actions_adddup2(start, end, descriptor);
    }
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
    std::vector<char*> words = {const_cast<char*>([path UTF8String])};
    for (NSString* argument in [self arguments]) {
        words.push_back(const_cast<char*>([argument UTF8String]));
    }
    words.push_back(nullptr);
    // GNUstep ignores it. One that is handled instead is as usual again in the child.
    static_cast<void>(std::signal(SIGPIPE, [](int) {}));
    posix_spawn_file_actions_t start;
    posix_spawn_file_actions_init(&start);
    if (_currentDirectoryPath) {
        posix_spawn_file_actions_addchdir_np(&start, [_currentDirectoryPath UTF8String]);
    }
    sendTo(_standardOutput, STDOUT_FILENO, &start);
    sendTo(_standardError, STDERR_FILENO, &start);
    posix_spawn_file_actions_addclosefrom_np(&start, STDERR_FILENO + 1);
    const int error = posix_spawn(&_taskId, words[0], &start, nullptr, words.data(), environ);
    posix_spawn_file_actions_destroy(&start);
    if (error) {
        [NSException raise:NSInvalidArgumentException
                    format:@"“%@” could not be started: %s.", path, std::strerror(error)];
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
