#include <poll.h>
#include <spawn.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

// This header does not say that it is C.
extern "C" {
#include <sys/pidfd.h>
}

#import "ns_progress_indicator.h"

namespace {

constexpr int animationInterval = 80;  // milliseconds

/// Where the stand-in for a tool of macOS lies; nil if there is none.
NSString* standInFor(NSString* tool) {
    if (![tool isEqualToString:@"/usr/bin/ditto"]) {
        return nil;
    }
    return [[[NSBundle mainBundle] bundlePath] stringByAppendingPathComponent:@"Helpers/ditto"];
}

/// What a child is started with.
class Spawn {
  public:
    Spawn() {
        posix_spawn_file_actions_init(&actions_);
        posix_spawnattr_init(&attributes_);
        // GNUstep ignores it, and a child would go on doing so.
        sigset_t brokenPipe;
        sigemptyset(&brokenPipe);
        sigaddset(&brokenPipe, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes_, &brokenPipe);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF);
    }
    ~Spawn() {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&actions_);
    }
    Spawn(const Spawn&) = delete;
    Spawn& operator=(const Spawn&) = delete;

    void connect(int stream, NSFileHandle* handle) {
        if (handle) {
            posix_spawn_file_actions_adddup2(&actions_, [handle fileDescriptor], stream);
        }
    }

    void setDirectory(NSString* path) {
        if (path) {
            posix_spawn_file_actions_addchdir_np(&actions_, [path UTF8String]);
        }
    }

    /// The first of `arguments` is the executable. The system's reason if that failed, else 0.
    int start(std::vector<std::string> arguments, pid_t* child) {
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
        std::vector<char*> texts;
        texts.reserve(arguments.size() + 1);
        for (std::string& argument : arguments) {
            texts.push_back(argument.data());
        }
        texts.push_back(nullptr);
        return posix_spawn(child, texts[0], &actions_, &attributes_, texts.data(), environ);
    }

  private:
    posix_spawn_file_actions_t actions_;
    posix_spawnattr_t attributes_;
};

/// The child's end of what was set as one of its outputs.
NSFileHandle* writingEnd(id output) {
    return [output isKindOfClass:[NSPipe class]] ? [output fileHandleForWriting] : output;
}

/// Closes this process's copy of the child's end, so that a reader sees the end when the child
/// closes its own.
void closePipe(id output) {
    if ([output isKindOfClass:[NSPipe class]]) {
        [[output fileHandleForWriting] closeFile];
    }
}

}  // namespace

/// What every task is an instance of.
@interface NSConcreteUnixTask : NSTask
@end

@implementation NSConcreteUnixTask (Complement)

/// Raises an exception if the child cannot be started, as on macOS. GNUstep's own child then ends
/// in a way that takes down what it shares with its parent; and it stays where it is if it is told
/// to work in a folder that is not there. Standard input and an environment of its own are not
/// offered.
- (void)launch {
    NSString* standIn = standInFor([self launchPath]);
    NSString* path = standIn ? standIn : [self launchPath];
    const int reason = [self startExecutable:path];
    if (reason != 0) {
        [NSException raise:NSInvalidArgumentException
                    format:@"“%@” could not be started: %s.", path, std::strerror(reason)];
    }
    _hasLaunched = YES;
    closePipe(_standardOutput);
    if (_standardError != _standardOutput) {
        closePipe(_standardError);
    }
}

/// The system's reason if that failed, else 0.
- (int)startExecutable:(NSString*)path {
    std::vector<std::string> arguments = {[path UTF8String]};
    for (NSString* argument in [self arguments]) {
        arguments.emplace_back([argument UTF8String]);
    }
    Spawn spawn;
    spawn.connect(STDOUT_FILENO, writingEnd(_standardOutput));
    spawn.connect(STDERR_FILENO, writingEnd(_standardError));
    spawn.setDirectory(_currentDirectoryPath);
    return spawn.start(std::move(arguments), &_taskId);
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
