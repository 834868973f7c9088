#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "posix_error.h"

namespace fs = std::filesystem;

namespace {

const char* pathOf(NSURL* url) {
    return [[url path] UTF8String];
}

NSString* notDone(NSURL* url, NSString* done) {
    return [NSString stringWithFormat:@"“%@” could not be %@", [url path], done];
}

/// Unlike GNUstep's, neither this nor moving writes through a symbolic link that leads nowhere.
std::error_code copyItem(const fs::path& source, const fs::path& target) {
    std::error_code code;
    if (fs::exists(fs::symlink_status(target, code))) {
        return std::make_error_code(std::errc::file_exists);
    }
    fs::copy(source, target, fs::copy_options::recursive | fs::copy_options::copy_symlinks, code);
    if (code) {
        // What is there in part must not pass for the whole.
        std::error_code ignored;
        fs::remove_all(target, ignored);
    }
    return code;
}

std::error_code moveItem(const fs::path& source, const fs::path& target) {
    if (renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0) {
        return {};
    }
    if (errno != EXDEV) {
        return {errno, std::system_category()};
    }
    std::error_code code = copyItem(source, target);
    if (!code) {
        fs::remove_all(source, code);
    }
    return code;
}

NSArray* folderIn(const char* variable, NSString* name) {
    const char* parent = std::getenv(variable);
    if (!parent || !*parent) {
        return @[];
    }
    NSString* path = [[NSString stringWithUTF8String:parent] stringByAppendingPathComponent:name];
    return @[ [NSURL fileURLWithPath:path isDirectory:YES] ];
}

}  // namespace

/// Copying, moving and creating replace GNUstep's own, which succeed on a file in a folder's place,
/// give reasons that are not those of the failure, or give none.
@implementation NSFileManager (Complement)

- (BOOL)copyItemAtURL:(NSURL*)source toURL:(NSURL*)target error:(NSError**)error {
    const std::error_code code = copyItem(pathOf(source), pathOf(target));
    return code ? failed(error, code.value(), notDone(source, @"copied")) : YES;
}

- (BOOL)moveItemAtURL:(NSURL*)source toURL:(NSURL*)target error:(NSError**)error {
    const std::error_code code = moveItem(pathOf(source), pathOf(target));
    return code ? failed(error, code.value(), notDone(source, @"moved")) : YES;
}

- (BOOL)createDirectoryAtURL:(NSURL*)url
    withIntermediateDirectories:(BOOL)intermediates
                     attributes:(NSDictionary*)attributes
                          error:(NSError**)error {
    std::error_code code;
    if (intermediates) {
        fs::create_directories(pathOf(url), code);
    } else if (mkdir(pathOf(url), 0777) != 0) {
        code = {errno, std::system_category()};
    }
    if (code) {
        return failed(error, code.value(), notDone(url, @"created"));
    }
    return !attributes || [self changeFileAttributes:attributes atPath:[url path]];
}

/// In the order of the system; a name that is not UTF-8 is left out.
- (NSArray*)contentsOfDirectoryAtPath:(NSString*)path error:(NSError**)error {
    std::error_code code;
    fs::directory_iterator entries([path UTF8String], code);
    if (code) {
        failed(error, code.value(), [NSString stringWithFormat:@"“%@” could not be listed", path]);
        return nil;
    }
    NSMutableArray* names = [NSMutableArray array];
    for (; !code && entries != fs::directory_iterator(); entries.increment(code)) {
        const std::string entry = entries->path().filename();
        NSString* name = [[[NSString alloc] initWithBytes:entry.data()
                                                   length:entry.size()
                                                 encoding:NSUTF8StringEncoding] autorelease];
        if (name) {
            [names addObject:name];
        }
    }
    return names;
}

#pragma mark Standard folders

/// The stage stands for the root of a Mac's disk; without one there are no folders of its.
- (NSArray*)URLsForDirectory:(NSSearchPathDirectory)directory
                   inDomains:(NSSearchPathDomainMask)domains {
    if (directory == NSApplicationDirectory && domains == NSLocalDomainMask) {
        return folderIn("MORVELLA_STAGE", @"Applications");
    }
    if (directory == NSUserDirectory && domains == NSLocalDomainMask) {
        return folderIn("MORVELLA_STAGE", @"Users");
    }
    if (directory == NSDocumentDirectory && domains == NSUserDomainMask) {
        return folderIn("HOME", @"Documents");
    }
    return @[];
}

/// Creates none.
- (NSURL*)URLForDirectory:(NSSearchPathDirectory)directory
                 inDomain:(NSSearchPathDomainMask)domain
        appropriateForURL:(NSURL*)url
                   create:(BOOL)create
                    error:(NSError**)error {
    NSArray* urls = [self URLsForDirectory:directory inDomains:domain];
    if ([urls count] == 0) {
        failed(error, ENOENT, @"There is no such standard folder");
        return nil;
    }
    return [urls objectAtIndex:0];
}

@end
