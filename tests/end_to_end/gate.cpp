// Preloaded into the installer and the archiver: each change of the stage's files waits here until
// a test lets it through. gate.py is the test's side.

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;

/// In a file that all processes and the test share.
struct Gate {
    std::atomic<int> arrived;
    std::atomic<int> allowed;
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

void waitForTurn() {
    const int turn = ++gate().arrived;
    while (turn > gate().allowed) {
        poll(nullptr, 0, 1);
    }
}

void waitIfOnStage(const fs::path& path) {
    std::error_code error;
    const std::string place = fs::absolute(path, error);
    if (place.starts_with(setting("MORVELLA_STAGE") + "/")) {
        waitForTurn();
    }
}

void waitIfOnStage(int descriptor) {
    std::error_code error;
    waitIfOnStage(fs::read_symlink("/proc/self/fd/" + std::to_string(descriptor), error));
}

int openFile(const char* path, int flags, va_list rest) {
    mode_t mode = 0;
    if (flags & O_CREAT) {
        mode = va_arg(rest, mode_t);
        waitIfOnStage(path);
    }
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const int descriptor = openFile(path, flags, rest);
    va_end(rest);
    return descriptor;
}

int open64(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const int descriptor = openFile(path, flags, rest);
    va_end(rest);
    return descriptor;
}

ssize_t write(int descriptor, const void* data, size_t size) {
    waitIfOnStage(descriptor);
    return syscall(SYS_write, descriptor, data, size);
}

ssize_t sendfile(int target, int source, off_t* offset, size_t size) noexcept {
    waitIfOnStage(target);
    return syscall(SYS_sendfile, target, source, offset, size);
}

int mkdir(const char* path, mode_t mode) noexcept {
    waitIfOnStage(path);
    return static_cast<int>(syscall(SYS_mkdir, path, mode));
}

int rename(const char* source, const char* target) noexcept {
    waitIfOnStage(source);
    return static_cast<int>(syscall(SYS_rename, source, target));
}

int renameat2(int from, const char* source, int to, const char* target,
              unsigned int flags) noexcept {
    waitIfOnStage(source);
    return static_cast<int>(syscall(SYS_renameat2, from, source, to, target, flags));
}
}
