#include <dlfcn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <csignal>
#include <cstdlib>
#include <string>
#include <string_view>

#import "ns_application.h"
#import "palette.h"

// NOLINTNEXTLINE(readability-identifier-naming): the name is GNUstep's, which has no header for it.
extern "C" const char* GSPathHandling(const char* mode);

namespace {

/// Without a stage the installer would work on this machine's own root.
void requireStage() {
    const char* stage = std::getenv("MORVELLA_STAGE");
    if (!stage || *stage != '/') {
        constexpr std::string_view message =
            "MORVELLA_STAGE must name the folder on which the installer shall run.\n";
        [[maybe_unused]] const ssize_t written =
            write(STDERR_FILENO, message.data(), message.size());
        _exit(2);
    }
}

/// Gives GNUstep, and GNUstep's own tools that it starts, a configuration by which they keep
/// settings and locks in no folder at all, neither in the account's home nor in the stage's. It
/// lies in memory, so that nothing of it stays behind however the process ends.
void keepSettingsNowhere() {
    constexpr std::string_view configuration = "GNUSTEP_USER_CONFIG_FILE=\n"
                                               "GNUSTEP_USER_DEFAULTS_DIR=/dev/null\n"
                                               "GNUSTEP_USER_DIR_LIBRARY=/dev/null\n";
    const int file = memfd_create("GNUstep.conf", MFD_CLOEXEC);
    // GNUstep ignores a configuration that others may write to.
    if (file < 0 || fchmod(file, 0600) != 0 ||
        write(file, configuration.data(), configuration.size()) < 0) {
        return;
    }
    const std::string path = "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(file);
    setenv("GNUSTEP_CONFIG_FILE", path.c_str(), 1);
}

/// Runs before GNUstep looks at any of this, and before `main`.
[[gnu::constructor(101)]] void prepare() {
    // Launch arguments and log lines are UTF-8 whatever the locale.
    setenv("GNUSTEP_STRING_ENCODING", "NSUTF8StringEncoding", 1);
    // A backslash in a name is no separator.
    GSPathHandling("unix");
    // The Trash is the home folder's, whatever else the person who runs this has set, and no daemon
    // of the desktop has a part in it.
    unsetenv("XDG_DATA_HOME");
    setenv("GIO_USE_VFS", "local", 1);
    // Should the system's cache of fonts be out of date, a new one goes where it is nobody's
    // litter.
    if (const char* runtime = std::getenv("XDG_RUNTIME_DIR")) {
        setenv("XDG_CACHE_HOME", runtime, 1);
    }
    // Nothing is typed here, so the long table of composed characters need not be read.
    setenv("XCOMPOSEFILE", "/dev/null", 1);
    keepSettingsNowhere();
}

}  // namespace

/// Takes the place of GNUstep's own, which it calls when everything is prepared.
int NSApplicationMain(int argc, const char** argv) {
    requireStage();
    registerPalette();
    [CompletedApplication sharedApplication];
    // GNUstep would end the application in its normal way from within the signal handler, which may
    // never return from there.
    for (const int number : {SIGTERM, SIGINT}) {
        static_cast<void>(std::signal(number, SIG_DFL));
    }
    const auto run =
        reinterpret_cast<decltype(&NSApplicationMain)>(dlsym(RTLD_NEXT, "NSApplicationMain"));
    return run(argc, argv);
}
