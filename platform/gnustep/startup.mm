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

/// Ends the process before it has shown a window.
[[noreturn]] void refuse(std::string_view sentence) {
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, sentence.data(), sentence.size());
    _exit(2);
}

/// GNUstep's libraries raise an exception over other texts, and do so while they are loaded.
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

/// Empty if the variable does not name a folder by its whole path.
fs::path folderIn(const char* variable) {
    const char* path = std::getenv(variable);
    std::error_code failed;
    return path && *path == '/' ? fs::weakly_canonical(path, failed) : fs::path();
}

/// Without a stage the installer would work on this machine's own root, and with a home elsewhere
/// on the account's real one.
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

/// Where the system has no current font cache, fontconfig writes one of its own, by default below
/// the home folder. It says so on standard error if it cannot.
void keepCachesOffTheStage() {
    std::error_code failed;
    const fs::path folder = fs::temp_directory_path(failed);
    setenv("XDG_CACHE_HOME", (folder / ("morvella-cache-" + std::to_string(getuid()))).c_str(), 1);
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
    keepCachesOffTheStage();
    keepSettingsNowhere();
    // A write beyond the limit of a file's size fails instead; here only, not in what is started.
    static_cast<void>(std::signal(SIGXFSZ, [](int) {}));
}

/// They are defaults: a user's own settings still win.
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

/// Takes the place of GNUstep's own, which would run on without a window.
int NSApplicationMain(int /*argc*/, const char** /*argv*/) {
    requireStage();
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    requireInterfaceFile();
    registerPalette();
    [CompletedApplication sharedApplication];
    // GNUstep would end the application in its normal way from within the signal handler, which may
    // never return from there.
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
