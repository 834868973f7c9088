#import <Foundation/Foundation.h>

#include "platform/cocoa/conversions.h"
#include "platform/cocoa/files.h"

namespace morvella {

FileUrl CocoaFiles::fileUrl(const std::string& path) const {
    BOOL isDirectory = NO;
    [[NSFileManager defaultManager] fileExistsAtPath:pathOf(path) isDirectory:&isDirectory];
    return isDirectory ? FileUrl::directory(path) : FileUrl::file(path);
}

bool CocoaFiles::isReachable(const FileUrl& url, ErrorOut error) const {
    return [urlOf(url) checkResourceIsReachableAndReturnError:ErrorParameter(error)];
}

bool CocoaFiles::fileExists(const std::string& path) const {
    return [[NSFileManager defaultManager] fileExistsAtPath:pathOf(path)];
}

bool CocoaFiles::isReadable(const std::string& path) const {
    return [[NSFileManager defaultManager] isReadableFileAtPath:pathOf(path)];
}

bool CocoaFiles::isWritable(const std::string& path) const {
    return [[NSFileManager defaultManager] isWritableFileAtPath:pathOf(path)];
}

std::optional<std::vector<std::string>> CocoaFiles::contentsOfDirectory(
    const std::string& path) const {
    NSArray* listed = [[NSFileManager defaultManager] contentsOfDirectoryAtPath:pathOf(path)
                                                                          error:NULL];
    if (!listed) {
        return std::nullopt;
    }
    std::vector<std::string> names;
    for (NSString* name in listed) {
        names.push_back(textOf(name));
    }
    return names;
}

std::optional<std::string> CocoaFiles::contentsOfFile(const std::string& path) const {
    NSData* data = [NSData dataWithContentsOfFile:pathOf(path) options:0 error:NULL];
    return data ? std::optional(bytesOf(data)) : std::nullopt;
}

bool CocoaFileChanges::createDirectory(const FileUrl& url, ErrorOut error) {
    return [[NSFileManager defaultManager] createDirectoryAtURL:urlOf(url)
                                    withIntermediateDirectories:YES
                                                     attributes:nil
                                                          error:ErrorParameter(error)];
}

bool CocoaFileChanges::copyItem(const FileUrl& source, const FileUrl& target, ErrorOut error) {
    NSFileManager* manager = [NSFileManager defaultManager];
    NSURL* targetUrl = urlOf(target);
    const bool wasThere = [targetUrl checkResourceIsReachableAndReturnError:NULL];
    const bool copied = [manager copyItemAtURL:urlOf(source)
                                         toURL:targetUrl
                                         error:ErrorParameter(error)];
    // An incomplete copy must not pass for a complete one.
    if (!copied && !wasThere &&
        ![manager contentsEqualAtPath:pathOf(source.path()) andPath:pathOf(target.path())]) {
        [manager removeItemAtURL:targetUrl error:NULL];
    }
    return copied;
}

bool CocoaFileChanges::moveItem(const FileUrl& source, const FileUrl& target, ErrorOut error) {
    return [[NSFileManager defaultManager] moveItemAtURL:urlOf(source)
                                                   toURL:urlOf(target)
                                                   error:ErrorParameter(error)];
}

bool CocoaFileChanges::trashItem(const FileUrl& url, ErrorOut error) {
    return [[NSFileManager defaultManager] trashItemAtURL:urlOf(url)
                                         resultingItemURL:NULL
                                                    error:ErrorParameter(error)];
}

// These values are passed to Foundation unchanged.
static_assert(static_cast<int>(StandardDirectory::applications) == NSApplicationDirectory);
static_assert(static_cast<int>(StandardDirectory::users) == NSUserDirectory);
static_assert(static_cast<int>(StandardDirectory::documents) == NSDocumentDirectory);
static_assert(static_cast<int>(Domain::user) == NSUserDomainMask);
static_assert(static_cast<int>(Domain::local) == NSLocalDomainMask);

std::string CocoaStandardFolders::homeDirectory() const {
    return textOf(NSHomeDirectory());
}

std::vector<FileUrl> CocoaStandardFolders::urls(StandardDirectory directory, Domain domain) const {
    NSArray* found = [[NSFileManager defaultManager]
        URLsForDirectory:static_cast<NSSearchPathDirectory>(directory)
               inDomains:static_cast<NSSearchPathDomainMask>(domain)];
    std::vector<FileUrl> folders;
    for (NSURL* url in found) {
        folders.push_back(FileUrl::directory(textOf([url path])));
    }
    return folders;
}

std::optional<FileUrl> CocoaStandardFolders::url(StandardDirectory directory, Domain domain,
                                                 ErrorOut error) const {
    NSURL* found = [[NSFileManager defaultManager]
          URLForDirectory:static_cast<NSSearchPathDirectory>(directory)
                 inDomain:static_cast<NSSearchPathDomainMask>(domain)
        appropriateForURL:nil
                   create:NO
                    error:ErrorParameter(error)];
    return found ? std::optional(FileUrl::directory(textOf([found path]))) : std::nullopt;
}

}  // namespace morvella
