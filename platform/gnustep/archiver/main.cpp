#include <malloc.h>
#include <sysexits.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "pack.hpp"
#include "unpack.hpp"

namespace {

constexpr std::array<std::string_view, 3> unpackOptions{"-v", "-x", "-k"};
constexpr std::array<std::string_view, 4> packOptions{"-c", "-k", "--sequesterRsrc",
                                                      "--keepParent"};

constexpr std::string_view usage =
    "usage: ditto -v -x -k ARCHIVE DESTINATION\n"
    "       ditto -c -k --sequesterRsrc --keepParent FOLDER ZIP\n";

/// Whether the command line is exactly these options and two paths.
template <std::size_t count>
bool matches(const std::vector<std::string>& arguments,
             const std::array<std::string_view, count>& options) {
    return arguments.size() == count + 2 &&
           std::equal(options.begin(), options.end(), arguments.begin());
}

}  // namespace

int main(int argumentCount, char** argumentValues) {
    const std::vector<std::string> arguments(argumentValues + 1, argumentValues + argumentCount);
    // libarchive asks for its compressor's memory anew for every entry: do not return it to the
    // system each time.
    mallopt(M_TRIM_THRESHOLD, 16 * 1024 * 1024);
    // A file that may not grow any further is an error to report, like a full disk.
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    try {
        if (matches(arguments, unpackOptions)) {
            return morvella::unpack(arguments[3], arguments[4]) ? EXIT_SUCCESS : EXIT_FAILURE;
        }
        if (matches(arguments, packOptions)) {
            morvella::pack(arguments[4], arguments[5]);
            return EXIT_SUCCESS;
        }
    } catch (const std::exception& failure) {
        std::cerr << "ditto: " << failure.what() << '\n';
        return EXIT_FAILURE;
    }
    std::cerr << usage;
    return EX_USAGE;
}
