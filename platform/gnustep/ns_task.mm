#import <Foundation/Foundation.h>
#include <glib.h>
#include <unistd.h>

#include <csignal>
#include <vector>

// This header does not say that it is C.
extern "C" {
#include <sys/pidfd.h>
}

namespace {

/// Where the stand-in for a tool of macOS lies; any other tool's own path.
NSString* standInFor(NSString* tool) {
    return
        [tool isEqualToString:@"/usr/bin/ditto"]
            ? [[[NSBundle mainBundle] bundlePath] stringByAppendingPathComponent:@"Helpers/ditto"]
            : tool;
}

/// Where a child writes; -1 for where its parent does.
int writingEndOf(NSPipe* output) {
    return output ? [[output fileHandleForWriting] fileDescriptor] : -1;
}

}  // namespace

/// The class of every task. The child's end is an event of the run loop.
@interface NSConcreteUnixTask : NSTask <RunLoopEvents>
@end

@implementation NSConcreteUnixTask (Complement)

/// Raises an exception if the child cannot be started, as on macOS. GNUstep's own child then tears
/// down what it shares with its parent, and starts elsewhere if its working directory is missing.
/// Outputs are pipes; input and environment are the parent's.
- (void)launch {
    NSString* path = standInFor([self launchPath]);
    std::vector<const char*> words = {[path UTF8String]};
    for (NSString* argument in [self arguments]) {
        words.push_back([argument UTF8String]);
    }
    words.push_back(nullptr);
    // GNUstep's handler makes the run loop collect every child and lose the status of this one.
    static_cast<void>(std::signal(SIGCHLD, SIG_DFL));
    GError* reason = nullptr;
    g_spawn_async_with_pipes_and_fds(
        [_currentDirectoryPath UTF8String], words.data(), nullptr,
        GSpawnFlags(G_SPAWN_DO_NOT_REAP_CHILD | G_SPAWN_CHILD_INHERITS_STDIN), nullptr, nullptr, -1,
        writingEndOf(_standardOutput), writingEndOf(_standardError), nullptr, nullptr, 0, &_taskId,
        nullptr, nullptr, nullptr, &reason);
    if (reason) {
        NSString* text = @(reason->message);
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

/// Runs the run loop in its default mode until the child has ended, as on macOS. GNUstep's own does
/// too, but notices the end up to a tenth of a second late.
- (void)waitUntilExit {
    const int child = pidfd_open(_taskId, 0);
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the run loop takes a descriptor as a pointer.
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

- (void)receivedEvent:(void*)data
                 type:(RunLoopEventType)type
                extra:(void*)extra
              forMode:(NSString*)mode {
}

@end
