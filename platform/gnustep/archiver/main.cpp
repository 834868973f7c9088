#include <sysexits.h>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "archiver.hpp"

namespace {

using Arguments = std::vector<std::string>;

constexpr const char* usage =
    "usage: ditto -v -x -k ARCHIVE DESTINATION\n"
    "       ditto -c -k --sequesterRsrc --keepParent FOLDER ZIP\n";

int run(const Arguments& arguments) {
    const Arguments options(arguments.begin(),
                            arguments.end() - std::min<std::ptrdiff_t>(2, std::ssize(arguments)));
    if (options == Arguments{"-v", "-x", "-k"}) {
        return morvella::unpack(arguments[3], arguments[4]) ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    if (options == Arguments{"-c", "-k", "--sequesterRsrc", "--keepParent"}) {
        morvella::pack(arguments[4], arguments[5]);
        return EXIT_SUCCESS;
    }
    std::cerr << usage;
    return EX_USAGE;
}

}  // namespace

int main(int argumentCount, char** argumentValues) {
    // A file that may not grow any further is an error to report, like a full disk.
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    try {
        return run({argumentValues + 1, argumentValues + argumentCount});
    } catch (const std::exception& failure) {
        std::cerr << "ditto: " << failure.what() << '\n';
        return EXIT_FAILURE;
    }
}
