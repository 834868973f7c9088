#include <spawn.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <vector>

// This header does not say that it is C.
extern "C" {
#include <sys/pidfd.h>
}

#import <Foundation/Foundation.h>

namespace {

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

/// The class of every task. The child's end is an event of the run loop.
@interface NSConcreteUnixTask : NSTask <RunLoopEvents>
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
    // A child inherits an ignored signal, and GNUstep ignores this one; a handled one it does not.
    static_cast<void>(std::signal(SIGPIPE, [](int) {}));
    // GNUstep's handler makes the run loop collect every child and lose the status of this one.
    static_cast<void>(std::signal(SIGCHLD, SIG_DFL));
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

/// Runs the run loop in its default mode until the child has ended, as on macOS. GNUstep's own does
/// too, but notices the end up to a tenth of a second late.
- (void)waitUntilExit {
    const int child = pidfd_open(_taskId, 0);
    void* source = reinterpret_cast<void*>(static_cast<intptr_t>(child));
    NSRunLoop* runLoop = [NSRunLoop currentRunLoop];
    [runLoop addEvent:source type:ET_RDESC watcher:self forMode:NSDefaultRunLoopMode];
    while ([self isRunning]) {
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        [runLoop runMode:NSDefaultRunLoopMode beforeDate:[NSDate distantFuture]];
        [pool release];
    }
    [runLoop removeEvent:source type:ET_RDESC forMode:NSDefaultRunLoopMode all:YES];
    close(child);
}

/// The child has ended; the loop above looks by itself.
- (void)receivedEvent:(void*)data
                 type:(RunLoopEventType)type
                extra:(void*)extra
              forMode:(NSString*)mode {
}

@end
