#import <Foundation/Foundation.h>
#include <glib.h>
#include <unistd.h>

#include <csignal>
#include <vector>

// This header lacks extern "C".
extern "C" {
#include <sys/pidfd.h>
}

namespace {

/// The path of the stand-in for a macOS tool; returns any other path unchanged.
NSString* standInFor(NSString* tool) {
    return
        [tool isEqualToString:@"/usr/bin/ditto"]
            ? [[[NSBundle mainBundle] bundlePath] stringByAppendingPathComponent:@"Helpers/ditto"]
            : tool;
}

/// The descriptor that a child writes to; -1 to inherit its parent's.
int writingEndOf(NSPipe* output) {
    return output ? [[output fileHandleForWriting] fileDescriptor] : -1;
}

}  // namespace

/// The class of every task. The child's exit is a run loop event.
@interface NSConcreteUnixTask : NSTask <RunLoopEvents>
@end

@implementation NSConcreteUnixTask (Complement)

/// Raises an exception if the child cannot be started, as on macOS. GNUstep forks: a child that
/// fails to exec tears down state shared with its parent, and one without its working directory
/// starts elsewhere. Outputs are pipes; input and environment are inherited.
- (void)launch {
    NSString* path = standInFor([self launchPath]);
    std::vector<const char*> words = {[path UTF8String]};
    for (NSString* argument in [self arguments]) {
        words.push_back([argument UTF8String]);
    }
    words.push_back(nullptr);
    // With GNUstep's handler, the run loop reaps every child and loses this one's status.
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
    // Or the reader would never see end-of-file. Both outputs may be the same pipe.
    [[_standardOutput fileHandleForWriting] closeFile];
    if (_standardError != _standardOutput) {
        [[_standardError fileHandleForWriting] closeFile];
    }
}

/// Runs the run loop in its default mode until the child has ended, as on macOS. GNUstep's version
/// does too, but notices the exit up to a tenth of a second late.
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
