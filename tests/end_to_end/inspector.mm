// Preloaded into the installer under test: tells a test what the window shows, as JSON text,
// through a socket. inspector.py is the test's side.
//
// It answers whenever the main thread waits, because GNUstep's run loop and everything else that
// keeps the main thread waiting calls `poll`, which is replaced here.

#import "description.h"

#include <dlfcn.h>
#include <execinfo.h>
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

/// Where a test asks.
class Door {
  public:
    Door() {
        const char* place = std::getenv("INSPECTOR");
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (!place || std::strlen(place) >= sizeof(address.sun_path)) {
            return;
        }
        std::strcpy(address.sun_path, place);
        socket_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        if (bind(socket_, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0 ||
            listen(socket_, 8) != 0) {
            std::abort();
        }
        // What the installer starts is not asked anything.
        unsetenv("INSPECTOR");
        leavePreloading();
    }

    [[nodiscard]] int descriptor() const { return socket_; }

    void answer() {
        const int asker = accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC);
        if (asker < 0) {
            return;
        }
        answering_ = true;
        @autoreleasepool {
            NSData* state = [NSJSONSerialization dataWithJSONObject:describeWindow()
                                                            options:0
                                                              error:nullptr];
            send(asker, [state bytes], [state length], MSG_NOSIGNAL);
        }
        answering_ = false;
        close(asker);
    }

    [[nodiscard]] bool isOpenNow() const {
        return socket_ >= 0 && !answering_ && gettid() == getpid();
    }

  private:
    static void leavePreloading() {
        std::string others;
        std::string libraries = std::getenv("LD_PRELOAD");
        for (std::size_t end = 0; !libraries.empty(); libraries.erase(0, end)) {
            end = std::min(libraries.find(':'), libraries.size() - 1) + 1;
            const std::string library = libraries.substr(0, end);
            if (library.find("libinspector") == std::string::npos) {
                others += library;
            }
        }
        setenv("LD_PRELOAD", others.c_str(), 1);
    }

    int socket_ = -1;
    bool answering_ = false;
};

Door door;

int wait(pollfd* descriptors, nfds_t count, int timeout) {
    return static_cast<int>(syscall(SYS_poll, descriptors, count, timeout));
}

/// While it waits for the screen itself, nothing may be asked of AppKit.
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

/// Answers when nothing else is to be done. Returns early then: what the answer took from the
/// connection to the screen lies in a queue, where only the caller looks.
extern "C" int poll(pollfd* descriptors, nfds_t count, int timeout) {
    if (timeout == 0 || !door.isOpenNow() || waitsForScreen()) {
        return wait(descriptors, count, timeout);
    }
    std::vector<pollfd> all(descriptors, descriptors + count);
    all.push_back({door.descriptor(), POLLIN, 0});
    const int ready = wait(all.data(), all.size(), timeout);
    std::copy(all.begin(), all.end() - 1, descriptors);
    if (ready <= 0 || all.back().revents == 0) {
        return ready;
    }
    if (ready == 1) {
        door.answer();
    }
    return ready - 1;
}
