#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

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

/// A folder of the stage, which stands for the root of a Mac's disk; nil without a stage.
NSURL* stagedFolder(NSString* name) {
    const char* stage = std::getenv("MORVELLA_STAGE");
    if (!stage || !*stage) {
        return nil;
    }
    NSString* path = [[NSString stringWithUTF8String:stage] stringByAppendingPathComponent:name];
    return [NSURL fileURLWithPath:path isDirectory:YES];
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
    DIR* folder = opendir([path UTF8String]);
    if (!folder) {
        failed(error, errno, [NSString stringWithFormat:@"“%@” could not be listed", path]);
        return nil;
    }
    NSMutableArray* names = [NSMutableArray array];
    while (const dirent* entry = readdir(folder)) {
        if (std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0) {
            continue;
        }
        NSString* name = [[NSString alloc] initWithBytes:entry->d_name
                                                  length:std::strlen(entry->d_name)
                                                encoding:NSUTF8StringEncoding];
        if (name) {
            [names addObject:name];
            [name release];
        }
    }
    closedir(folder);
    return names;
}

#pragma mark Standard folders

- (NSArray*)URLsForDirectory:(NSSearchPathDirectory)directory
                   inDomains:(NSSearchPathDomainMask)domains {
    NSURL* staged = nil;
    if (directory == NSApplicationDirectory && domains == NSLocalDomainMask) {
        staged = stagedFolder(@"Applications");
    } else if (directory == NSUserDirectory && domains == NSLocalDomainMask) {
        staged = stagedFolder(@"Users");
    } else if (directory == NSDocumentDirectory && domains == NSUserDomainMask) {
        NSString* path = [NSHomeDirectory() stringByAppendingPathComponent:@"Documents"];
        staged = [NSURL fileURLWithPath:path isDirectory:YES];
    } else {
        NSMutableArray* urls = [NSMutableArray array];
        for (NSString* path in NSSearchPathForDirectoriesInDomains(directory, domains, YES)) {
            [urls addObject:[NSURL fileURLWithPath:path isDirectory:YES]];
        }
        return urls;
    }
    return staged ? @[ staged ] : @[];
}

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
    NSURL* found = [urls objectAtIndex:0];
    const BOOL usable = !create || [self createDirectoryAtURL:found
                                       withIntermediateDirectories:YES
                                                        attributes:nil
                                                             error:error];
    return usable ? found : nil;
}

@end
