// Preloaded into the installer and the archiver: each change to the installation's places waits
// here until a test allows it. gate.py is the test's side.

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;

/// Lies in a file that the test and all processes map.
struct Gate {
    std::atomic<int> arrived;
    std::atomic<int> allowed;
    /// Only changes to paths that contain this are counted and held.
    std::array<char, 248> text;
};

std::string setting(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

Gate& gate() {
    static Gate* const shared = [] {
        const int file = open(setting("GATE").c_str(), O_RDWR | O_CLOEXEC);
        void* memory = mmap(nullptr, sizeof(Gate), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        if (memory == MAP_FAILED) {
            std::perror("GATE");
            std::abort();
        }
        close(file);
        return static_cast<Gate*>(memory);
    }();
    return *shared;
}

/// Aborts, naming the place, if the test does not allow the change in time.
void waitForTurn(const std::string& place) {
    using Clock = std::chrono::steady_clock;
    const std::chrono::duration<double> patience(std::stod(setting("GATE_SECONDS")));
    const auto deadline = Clock::now() + patience;
    const int turn = ++gate().arrived;
    while (turn > gate().allowed) {
        if (Clock::now() > deadline) {
            std::fprintf(stderr, "the gate held %s for %g seconds\n", place.c_str(),
                         patience.count());
            std::abort();
        }
        poll(nullptr, 0, 1);
    }
}

bool isOfInstallation(const std::string& path) {
    std::istringstream places(setting("GATE_PLACES"));
    for (std::string place; std::getline(places, place);) {
        if (path == place || path.starts_with(place + "/")) {
            return true;
        }
    }
    return false;
}

fs::path pathOf(int descriptor) {
    std::error_code error;
    return fs::read_symlink("/proc/self/fd/" + std::to_string(descriptor), error);
}

void waitIfHeld(int folder, const fs::path& path) {
    std::error_code error;
    const fs::path base = folder == AT_FDCWD ? fs::current_path(error) : pathOf(folder);
    const std::string place = (base / path).lexically_normal();
    if (isOfInstallation(place) && place.find(gate().text.data()) != std::string::npos) {
        waitForTurn(place);
    }
}

template <typename... Arguments>
int change(int folder, const char* path, long number, Arguments... arguments) {
    waitIfHeld(folder, path);
    return static_cast<int>(syscall(number, arguments...));
}

int openFile(int folder, const char* path, int flags, va_list rest) {
    const mode_t mode = flags & O_CREAT ? va_arg(rest, mode_t) : 0;
    if (flags & (O_CREAT | O_TRUNC)) {
        waitIfHeld(folder, path);
    }
    return static_cast<int>(syscall(SYS_openat, folder, path, flags, mode));
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const int descriptor = openFile(AT_FDCWD, path, flags, rest);
    va_end(rest);
    return descriptor;
}

int openat(int folder, const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const int descriptor = openFile(folder, path, flags, rest);
    va_end(rest);
    return descriptor;
}

[[gnu::alias("open")]] int open64(const char* path, int flags, ...);
[[gnu::alias("openat")]] int openat64(int folder, const char* path, int flags, ...);

ssize_t write(int descriptor, const void* data, size_t size) {
    waitIfHeld(AT_FDCWD, pathOf(descriptor));
    return syscall(SYS_write, descriptor, data, size);
}

ssize_t sendfile(int target, int source, off_t* offset, size_t size) noexcept {
    waitIfHeld(AT_FDCWD, pathOf(target));
    return syscall(SYS_sendfile, target, source, offset, size);
}

int mkdir(const char* path, mode_t mode) noexcept {
    return change(AT_FDCWD, path, SYS_mkdir, path, mode);
}

int mkdirat(int folder, const char* path, mode_t mode) noexcept {
    return change(folder, path, SYS_mkdirat, folder, path, mode);
}

int rename(const char* source, const char* target) noexcept {
    return change(AT_FDCWD, source, SYS_rename, source, target);
}

int renameat2(int from, const char* source, int to, const char* target,
              unsigned int flags) noexcept {
    return change(from, source, SYS_renameat2, from, source, to, target, flags);
}
}
