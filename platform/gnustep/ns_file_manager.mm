#include <fcntl.h>
#include <gio/gio.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#import <Foundation/Foundation.h>

namespace fs = std::filesystem;

namespace {

fs::path pathOf(NSURL* url) {
    return [[url path] UTF8String];
}

/// Sets `error` unless it is null, and returns NO. `code` is an errno value.
BOOL failed(NSError** error, int code, NSString* what) {
    if (error) {
        NSString* description = [NSString stringWithFormat:@"%@: %s.", what, std::strerror(code)];
        *error = [NSError errorWithDomain:NSPOSIXErrorDomain
                                     code:code
                                 userInfo:@{NSLocalizedDescriptionKey : description}];
    }
    return NO;
}

BOOL done(const std::error_code& code, NSString* path, NSString* done, NSError** error) {
    return !code || failed(error, code.value(),
                           [NSString stringWithFormat:@"“%@” could not be %@", path, done]);
}

/// Unlike GNUstep's, neither this nor moving writes through a broken symbolic link.
std::error_code copyItem(const fs::path& source, const fs::path& target) {
    std::error_code code;
    if (fs::exists(fs::symlink_status(target, code))) {
        return std::make_error_code(std::errc::file_exists);
    }
    fs::copy(source, target, fs::copy_options::recursive | fs::copy_options::copy_symlinks, code);
    return code;
}

/// Works only within one file system, which is all that the installer needs.
std::error_code moveItem(const fs::path& source, const fs::path& target) {
    const int failed =
        renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE);
    return {failed ? errno : 0, std::system_category()};
}

}  // namespace

/// GNUstep's copy, move and create methods succeed if a file is in the folder's place, and report
/// wrong errors or none.
@implementation NSFileManager (Complement)

- (BOOL)copyItemAtURL:(NSURL*)source toURL:(NSURL*)target error:(NSError**)error {
    return done(copyItem(pathOf(source), pathOf(target)), [source path], @"copied", error);
}

- (BOOL)moveItemAtURL:(NSURL*)source toURL:(NSURL*)target error:(NSError**)error {
    return done(moveItem(pathOf(source), pathOf(target)), [source path], @"moved", error);
}

/// Always creates missing parents, and sets no attributes.
- (BOOL)createDirectoryAtURL:(NSURL*)url
    withIntermediateDirectories:(BOOL)intermediates
                     attributes:(NSDictionary*)attributes
                          error:(NSError**)error {
    std::error_code code;
    fs::create_directories(pathOf(url), code);
    return done(code, [url path], @"created", error);
}

/// Uses the freedesktop Trash: `.local/share/Trash` on the home folder's file system.
- (BOOL)trashItemAtURL:(NSURL*)url resultingItemURL:(NSURL**)resultingUrl error:(NSError**)error {
    if (resultingUrl) {
        *resultingUrl = nil;
    }
    GFile* file = g_file_new_for_path([[url path] UTF8String]);
    GError* reason = nullptr;
    const BOOL trashed = g_file_trash(file, nullptr, &reason);
    g_object_unref(file);
    if (reason && error) {
        *error = [NSError errorWithDomain:NSCocoaErrorDomain
                                     code:NSFileWriteUnknownError
                                 userInfo:@{NSLocalizedDescriptionKey : @(reason->message)}];
    }
    g_clear_error(&reason);
    return trashed;
}

#pragma mark Standard folders

/// The stage is the root of the Mac's disk; without a stage there are no standard folders.
- (NSArray*)URLsForDirectory:(NSSearchPathDirectory)directory
                   inDomains:(NSSearchPathDomainMask)domains {
    const bool isUsers = domains == NSUserDomainMask;
    const char* parent = std::getenv(isUsers ? "HOME" : "MORVELLA_STAGE");
    if (!parent || !*parent) {
        return @[];
    }
    NSString* name = directory == NSApplicationDirectory ? @"Applications"
                     : directory == NSUserDirectory      ? @"Users"
                                                         : @"Documents";
    NSString* path = [[NSString stringWithUTF8String:parent] stringByAppendingPathComponent:name];
    return @[ [NSURL fileURLWithPath:path isDirectory:YES] ];
}

/// Never creates the folder.
- (NSURL*)URLForDirectory:(NSSearchPathDirectory)directory
                 inDomain:(NSSearchPathDomainMask)domain
        appropriateForURL:(NSURL*)url
                   create:(BOOL)create
                    error:(NSError**)error {
    NSURL* found = [[self URLsForDirectory:directory inDomains:domain] lastObject];
    if (!found) {
        failed(error, ENOENT, @"There is no such standard folder");
    }
    return found;
}

@end
