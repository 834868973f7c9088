#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <array>
#include <cerrno>

namespace {

/// Becomes `executable`; on failure `report` learns why.
[[noreturn]] void become(const char* executable, const char* document, int report) {
    // The log is the installer's own, and whoever reads it waits for its end.
    const int null = open("/dev/null", O_RDWR);
    dup2(null, STDIN_FILENO);
    dup2(null, STDOUT_FILENO);
    dup2(null, STDERR_FILENO);
    close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    execl(executable, executable, document, nullptr);
    const int reason = errno;
    [[maybe_unused]] const ssize_t written = write(report, &reason, sizeof(reason));
    _exit(127);
}

/// Starts `executable` in a session of its own, with init as its parent, so that it neither ends
/// with the installer nor waits for it.
BOOL startDetached(const char* executable, const char* document) {
    std::array<int, 2> report = {};
    if (pipe2(report.data(), O_CLOEXEC) != 0) {
        return NO;
    }
    const pid_t child = fork();
    if (child == 0) {
        setsid();
        const pid_t application = fork();
        if (application == 0) {
            become(executable, document, report[1]);
        }
        _exit(application > 0 ? 0 : 1);
    }
    close(report[1]);
    int status = 1;
    while (child > 0 && waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    int reason = 0;
    const BOOL failed = read(report[0], &reason, sizeof(reason)) != 0;
    close(report[0]);
    return child > 0 && status == 0 && !failed;
}

/// The executable of the application at `path`, which is a bundle's or the executable's own.
NSString* executableOf(NSString* path) {
    BOOL isDirectory = NO;
    [[NSFileManager defaultManager] fileExistsAtPath:path isDirectory:&isDirectory];
    if (!isDirectory) {
        return path;
    }
    NSBundle* bundle = [NSBundle bundleWithURL:[NSURL fileURLWithPath:path isDirectory:YES]];
    NSString* name = [[bundle infoDictionary] objectForKey:@"CFBundleExecutable"];
    return [name isKindOfClass:[NSString class]]
               ? [[path stringByAppendingPathComponent:@"Contents/MacOS"]
                     stringByAppendingPathComponent:name]
               : nil;
}

}  // namespace

@implementation NSWorkspace (Complement)

/// GNUstep looks for all applications of the machine, by a tool that writes a list of them into the
/// account's home. The installer asks for none.
- (void)findApplications {
}

/// The application gets the document's path as its only argument.
- (BOOL)openFile:(NSString*)document withApplication:(NSString*)application {
    NSString* executable = executableOf(application);
    return executable && [[NSFileManager defaultManager] fileExistsAtPath:document] &&
           startDetached([executable UTF8String], [document UTF8String]);
}

@end
