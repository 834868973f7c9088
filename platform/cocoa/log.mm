#include "platform/cocoa/log.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#ifdef __APPLE__
#include <os/log.h>
#endif

#include "platform/cocoa/conversions.h"

namespace morvella {

namespace {

/// Standard error, if it is a pipe or socket. A stalled reader would block NSLog, so NSLog writes
/// to /dev/null and this class writes the lines.
class ReaderOfStandardError {
  public:
    /// Returns false if standard error is something else, which never blocks for long.
    bool takeOver() {
        struct stat status;
        if (original_ >= 0) {
            return true;
        }
        if (fstat(STDERR_FILENO, &status) != 0 ||
            !(S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode))) {
            return false;
        }
        original_ = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
        const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
        dup2(nowhere, STDERR_FILENO);
        close(nowhere);
        return true;
    }

    /// Writes as much of `text` as the reader accepts; restores standard error if that is all.
    void write(const std::string& text) {
        constexpr int patience = 250;  // milliseconds
        pending_ += text;
        send(stalled_ ? 0 : patience);
        if (pending_.empty()) {
            dup2(original_, STDERR_FILENO);
            close(original_);
            original_ = -1;
        }
    }

    /// Waits up to `milliseconds` each time the reader stalls. Unsent text is kept.
    void send(int milliseconds) {
        constexpr size_t chunk = 512;  // A pipe that is ready accepts this much without blocking.
        pollfd reader = {.fd = original_, .events = POLLOUT, .revents = 0};
        while (!pending_.empty()) {
            stalled_ = poll(&reader, 1, milliseconds) <= 0;
            if (stalled_) {
                return;
            }
            const ssize_t written =
                ::write(original_, pending_.data(), std::min(chunk, pending_.size()));
            if (written >= 0) {
                pending_.erase(0, static_cast<size_t>(written));
            } else if (errno != EINTR && errno != EAGAIN) {
                pending_.clear();  // The reader has exited.
            }
        }
    }

  private:
    int original_ = -1;
    bool stalled_ = false;
    std::string pending_;
};

ReaderOfStandardError& readerOfStandardError() {
    static ReaderOfStandardError& reader = *[] {
        // A handler, unlike SIG_IGN, is not inherited by children.
        static_cast<void>(std::signal(SIGPIPE, [](int) {}));
        constexpr int patienceAtExit = 1000;
        static_cast<void>(std::atexit([] { readerOfStandardError().send(patienceAtExit); }));
        return new ReaderOfStandardError;
    }();
    return reader;
}

/// The line as NSLog writes it to standard error.
std::string formatted(NSString* line) {
    NSDateFormatter* formatter = [[[NSDateFormatter alloc] init] autorelease];
    [formatter setDateFormat:@"yyyy-MM-dd HH:mm:ss.SSS"];
    [formatter setLocale:[[[NSLocale alloc] initWithLocaleIdentifier:@"en_US_POSIX"] autorelease]];
    NSProcessInfo* process = [NSProcessInfo processInfo];
    return textOf([NSString stringWithFormat:@"%@ %@[%d:%d] %@\n",
                                             [formatter stringFromDate:[NSDate date]],
                                             [process processName], getpid(), getpid(), line]);
}

}  // namespace

void writeLogLine(NSString* line) {
    ReaderOfStandardError& reader = readerOfStandardError();
    const bool tookOver = reader.takeOver();
    NSLog(@"%@", line);
#ifdef __APPLE__
    // From this version on, the system log shows NSLog's arguments as "<private>".
    if (@available(macOS 26.0, *)) {
        os_log(OS_LOG_DEFAULT, "%{public}s", [line UTF8String]);
    }
#endif
    if (tookOver) {
        reader.write(formatted(line));
    }
}

void CocoaLog::writeLine(const std::string& line) {
    writeLogLine(stringOf(line));
}

}  // namespace morvella
