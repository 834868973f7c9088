// Preloaded into the installer under test. Describes the window to inspector.py as JSON through a
// socket, and presses buttons as VoiceOver does. It replaces `poll`, which the main thread calls
// whenever it waits, and answers from there.

#import "description.h"

#include <dlfcn.h>
#include <execinfo.h>
#include <objc/runtime.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

/// Casting between two signatures through this type avoids a compiler warning.
using AnyFunction = void (*)();

/// How many actions and children the main thread is waiting for.
int underWay = 0;

IMP waitUntilExit;

void waitUntilExitCounted(NSTask* task, SEL selector) {
    ++underWay;
    const auto original = reinterpret_cast<AnyFunction>(waitUntilExit);
    reinterpret_cast<void (*)(NSTask*, SEL)>(original)(task, selector);
    --underWay;
}

void countWaits() {
    const Method method =
        class_getInstanceMethod(NSClassFromString(@"NSConcreteUnixTask"), @selector(waitUntilExit));
    const auto counted = reinterpret_cast<AnyFunction>(&waitUntilExitCounted);
    waitUntilExit = method_setImplementation(method, reinterpret_cast<IMP>(counted));
}

void raiseException(NSProgressIndicator* /*indicator*/, SEL /*selector*/, id /*sender*/) {
    [NSException raise:NSGenericException format:@"raised for a test"];
}

/// Simulates an exception raised by one of the platform's own classes.
void makeIndicatorsRaise() {
    const Method start =
        class_getInstanceMethod([NSProgressIndicator class], @selector(startAnimation:));
    const auto raising = reinterpret_cast<AnyFunction>(&raiseException);
    method_setImplementation(start, reinterpret_cast<IMP>(raising));
}

std::string setting(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

/// Answers a test's questions.
class Inspector {
  public:
    Inspector() {
        const std::string place = setting("INSPECTOR");
        sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
        if (place.empty() || place.size() >= sizeof(address.sun_path)) {
            return;
        }
        std::strcpy(address.sun_path, place.c_str());
        socket_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        if (bind(socket_, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0 ||
            listen(socket_, 8) != 0) {
            std::abort();
        }
        // The processes that the installer starts are not inspected.
        unsetenv("INSPECTOR");
        setenv("LD_PRELOAD", setting("PRELOAD_IN_CHILDREN").c_str(), 1);
    }

    [[nodiscard]] int descriptor() const { return socket_; }

    /// `isWorking` says whether the main thread waits for anything but events.
    void answer(bool isWorking) {
        const int asker = accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC);
        if (asker < 0) {
            return;
        }
        answering_ = true;
        @autoreleasepool {
            static const bool counts = (countWaits(), true);
            NSData* answer = [NSJSONSerialization
                dataWithJSONObject:answerTo(question(asker), counts && isWorking)
                           options:0
                             error:nullptr];
            send(asker, [answer bytes], [answer length], MSG_NOSIGNAL);
        }
        answering_ = false;
        close(asker);
    }

    [[nodiscard]] bool canAnswerNow() const {
        return socket_ >= 0 && !answering_ && gettid() == getpid();
    }

  private:
    static NSString* question(int asker) {
        std::string text;
        std::array<char, 256> piece{};
        for (ssize_t size = 0; (size = read(asker, piece.data(), piece.size())) > 0;) {
            text.append(piece.data(), size);
        }
        return [NSString stringWithUTF8String:text.c_str()];
    }

    /// A question is a command, the title of a button to press, or empty to describe the window.
    static NSDictionary* answerTo(NSString* question, bool isWorking) {
        if ([question isEqualToString:@"make indicators raise"]) {
            makeIndicatorsRaise();
            return @{@"done" : @(true)};
        }
        if ([question length] > 0) {
            NSButton* button = buttonTitled(question);
            [button performSelector:@selector(pressForTest) withObject:nil afterDelay:0];
            return @{@"done" : @(button != nil)};
        }
        NSDictionary* window = describeWindow();
        if ([window count] == 0) {
            return window;
        }
        NSMutableDictionary* state = [NSMutableDictionary dictionaryWithDictionary:window];
        [state setObject:@(isWorking) forKey:@"working"];
        return state;
    }

    int socket_ = -1;
    bool answering_ = false;
};

Inspector inspector;

int wait(pollfd* descriptors, nfds_t count, int timeout) {
    return static_cast<int>(syscall(SYS_poll, descriptors, count, timeout));
}

/// AppKit must not be called while it waits for the X server.
bool waitsForScreen() {
    // Enough to see past the functions that a sanitizer puts in between.
    std::array<void*, 6> callers{};
    const int count = backtrace(callers.data(), callers.size());
    return std::any_of(callers.begin(), callers.begin() + count, [](void* caller) {
        Dl_info information;
        return dladdr(caller, &information) == 0 ||
               std::strstr(information.dli_fname, "libxcb") != nullptr;
    });
}

}  // namespace

@implementation NSButton (Inspector)

- (void)pressForTest {
    ++underWay;
    [self performClick:nil];
    --underWay;
}

@end

/// Answers only if no other descriptor is ready, and then returns at once: answering may have moved
/// events from the X connection into a queue that only the caller checks.
extern "C" int poll(pollfd* descriptors, nfds_t count, int timeout) {
    if (timeout == 0 || !inspector.canAnswerNow() || waitsForScreen()) {
        return wait(descriptors, count, timeout);
    }
    std::vector<pollfd> all(descriptors, descriptors + count);
    all.push_back({inspector.descriptor(), POLLIN, 0});
    const int ready = wait(all.data(), all.size(), timeout);
    std::copy(all.begin(), all.end() - 1, descriptors);
    if (ready <= 0 || all.back().revents == 0) {
        return ready;
    }
    if (ready == 1) {
        inspector.answer(underWay > 0 || count == 0);  // the gate polls no descriptors
    }
    return ready - 1;
}
