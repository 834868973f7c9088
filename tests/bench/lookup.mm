// Looks up the User Library in the Library.cfg of a folder. Prints the nanoseconds this took, the
// kilobytes by which the process grew at its peak, and the path.
#import <Foundation/Foundation.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "live/get_live_user_lib.hpp"
#include "platform/cocoa/cocoa_platform.h"

namespace {

/// A field of /proc/self/status, in kilobytes.
long memory(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name + ":")) {
            return std::strtol(line.c_str() + name.size() + 1, nullptr, 10);
        }
    }
    return 0;
}

}  // namespace

int main(int /*argc*/, char** argv) {
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    const morvella::getLiveUserLib lookup(morvella::cocoaPlatform());
    int32_t status = 0;
    const long before = memory("VmRSS");
    const auto start = std::chrono::steady_clock::now();
    const auto found = lookup.getUserLibraryErrorInt(argv[1], &status);
    const std::chrono::nanoseconds taken = std::chrono::steady_clock::now() - start;
    std::printf("%lld\n%ld\n%s\n", static_cast<long long>(taken.count()), memory("VmHWM") - before,
                found.value_or("nothing").c_str());
    [pool release];
}
