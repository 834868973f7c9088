#include <glib.h>
#include <unistd.h>

#include <array>

#import <AppKit/AppKit.h>

namespace {

/// The executable of the application at `path`, which is a bundle or the executable itself.
NSString* executableOf(NSString* path) {
    NSBundle* bundle = [NSBundle bundleWithURL:[NSURL fileURLWithPath:path isDirectory:YES]];
    id name = [[bundle infoDictionary] objectForKey:@"CFBundleExecutable"];
    return bundle ? [NSString stringWithFormat:@"%@/Contents/MacOS/%@", path, name] : path;
}

}  // namespace

@implementation NSWorkspace (Complement)

/// Disabled: GNUstep runs a tool that lists all applications in a file in the account's home.
- (void)findApplications {
}

/// GNUstep's version locks a file and logs an error if a killed application left it locked.
- (NSNotificationCenter*)notificationCenter {
    return [NSNotificationCenter defaultCenter];
}

/// Passes the document's path as the only argument. Its output goes to /dev/null, or a reader of
/// the installer's log would wait for the application to exit. In its own session it outlives the
/// installer.
- (BOOL)openFile:(NSString*)document withApplication:(NSString*)application {
    if (![[NSFileManager defaultManager] fileExistsAtPath:document]) {
        return NO;
    }
    std::array<char*, 3> arguments = {const_cast<char*>([executableOf(application) UTF8String]),
                                      const_cast<char*>([document UTF8String]), nullptr};
    constexpr auto quiet = GSpawnFlags(G_SPAWN_STDOUT_TO_DEV_NULL | G_SPAWN_STDERR_TO_DEV_NULL);
    return g_spawn_async(
        nullptr, arguments.data(), nullptr, quiet, [](gpointer) { setsid(); }, nullptr, nullptr,
        nullptr);
}

@end
