#include <glib.h>
#include <unistd.h>

#include <array>

#import <AppKit/AppKit.h>

namespace {

/// The executable of the application at `path`, which is a bundle's or the executable's own.
NSString* executableOf(NSString* path) {
    NSBundle* bundle = [NSBundle bundleWithURL:[NSURL fileURLWithPath:path isDirectory:YES]];
    id name = [[bundle infoDictionary] objectForKey:@"CFBundleExecutable"];
    return bundle ? [NSString stringWithFormat:@"%@/Contents/MacOS/%@", path, name] : path;
}

}  // namespace

@implementation NSWorkspace (Complement)

/// GNUstep looks for all applications of the machine, by a tool that writes a list of them into the
/// account's home.
- (void)findApplications {
}

/// GNUstep's own locks a file, and logs that it cannot where a killed application left it locked.
- (NSNotificationCenter*)notificationCenter {
    return [NSNotificationCenter defaultCenter];
}

/// The application gets the document's path as its only argument. Its output goes nowhere: the log
/// is the installer's own, and whoever reads it waits for its end. A session of its own keeps it
/// from ending with the installer.
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
