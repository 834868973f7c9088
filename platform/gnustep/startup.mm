#include <glib.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#import "ns_application.h"
#import "theme.h"

// NOLINTNEXTLINE(readability-identifier-naming): the name is GNUstep's, which has no header for it.
extern "C" const char* GSPathHandling(const char* mode);

namespace {

namespace fs = std::filesystem;

/// Exits before any window is shown.
[[noreturn]] void refuse(std::string_view sentence) {
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, sentence.data(), sentence.size());
    _exit(2);
}

/// GNUstep's libraries raise an exception for anything else while they are being loaded.
void requireUtf8(int /*count*/, char** arguments, char** environment) {
    for (char** texts : {arguments, environment}) {
        for (; *texts; ++texts) {
            if (!g_utf8_validate(*texts, -1, nullptr)) {
                refuse("The environment and the arguments must be UTF-8.\n");
            }
        }
    }
}

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): the linker's own table.
[[gnu::section(".preinit_array"), gnu::used]] auto* const beforeLibraries = &requireUtf8;

/// Empty if the variable is not an absolute path.
fs::path folderIn(const char* variable) {
    const char* path = std::getenv(variable);
    std::error_code failed;
    return path && *path == '/' ? fs::weakly_canonical(path, failed) : fs::path();
}

/// Otherwise the installer would change this machine's root or the account's real home.
void requireStage() {
    const fs::path stage = folderIn("MORVELLA_STAGE");
    if (stage.empty()) {
        refuse("MORVELLA_STAGE must name the folder on which the installer shall run.\n");
    }
    const fs::path home = folderIn("HOME");
    if (std::mismatch(stage.begin(), stage.end(), home.begin(), home.end()).first != stage.end()) {
        refuse("HOME must name a folder inside MORVELLA_STAGE.\n");
    }
}

/// Keeps GNUstep and the tools it starts from storing settings and locks, be it in the account's
/// home or the stage's. The configuration is in memory, so nothing is left behind.
void keepSettingsNowhere() {
    constexpr std::string_view configuration = "GNUSTEP_USER_CONFIG_FILE=\n"
                                               "GNUSTEP_USER_DEFAULTS_DIR=/dev/null\n"
                                               "GNUSTEP_USER_DIR_LIBRARY=/dev/null\n";
    const int file = memfd_create("GNUstep.conf", MFD_CLOEXEC);
    // GNUstep ignores a configuration that others could write.
    if (file < 0 || fchmod(file, 0600) != 0 ||
        write(file, configuration.data(), configuration.size()) < 0) {
        return;
    }
    const std::string path = "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(file);
    setenv("GNUSTEP_CONFIG_FILE", path.c_str(), 1);
}

/// If the system's font cache is not current, fontconfig writes one, by default below the home
/// folder, and complains on standard error if it cannot.
void keepCachesOffTheStage() {
    std::error_code failed;
    const fs::path folder = fs::temp_directory_path(failed);
    setenv("XDG_CACHE_HOME", (folder / ("morvella-cache-" + std::to_string(getuid()))).c_str(), 1);
}

/// Runs before `main`, and before GNUstep reads any of this.
[[gnu::constructor(101)]] void prepare() {
    // Launch arguments and log lines are UTF-8 whatever the locale.
    setenv("GNUSTEP_STRING_ENCODING", "NSUTF8StringEncoding", 1);
    // A backslash is not a separator.
    GSPathHandling("unix");
    // Always use the home folder's Trash, without a desktop daemon.
    unsetenv("XDG_DATA_HOME");
    setenv("GIO_USE_VFS", "local", 1);
    keepCachesOffTheStage();
    keepSettingsNowhere();
    // Fail with EFBIG instead of dying from SIGXFSZ; children keep the default.
    static_cast<void>(std::signal(SIGXFSZ, [](int) {}));
}

/// As registered defaults, so the user's own settings win.
void registerPalette() {
    NSString* path = [[NSBundle mainBundle] pathForResource:@"palette" ofType:@"plist"];
    [[NSUserDefaults standardUserDefaults]
        registerDefaults:[NSDictionary dictionaryWithContentsOfFile:path]];
    [GSTheme setTheme:[[[MorvellaTheme alloc] initWithBundle:[NSBundle mainBundle]] autorelease]];
}

void requireInterfaceFile() {
    NSString* path = [[NSBundle mainBundle] pathForResource:@"MainMenu" ofType:@"xib"];
    NSData* data = path ? [NSData dataWithContentsOfFile:path] : nil;
    if (!data || ![[[[NSXMLParser alloc] initWithData:data] autorelease] parse]) {
        refuse("The installer's interface file is missing or damaged.\n");
    }
}

}  // namespace

/// Replaces GNUstep's version, which would keep running without a window.
int NSApplicationMain(int /*argc*/, const char** /*argv*/) {
    requireStage();
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    requireInterfaceFile();
    registerPalette();
    [CompletedApplication sharedApplication];
    // GNUstep would terminate the application from within its signal handler and could hang there.
    for (const int number : {SIGTERM, SIGINT}) {
        static_cast<void>(std::signal(number, SIG_DFL));
    }
    if (![NSBundle loadNibNamed:@"MainMenu" owner:NSApp] || [[NSApp windows] count] == 0) {
        refuse("The installer's interface file shows no window.\n");
    }
    [pool release];
    [NSApp run];
    return 0;
}
