#import <Foundation/Foundation.h>

#include "platform/cocoa/conversions.h"
#include "platform/cocoa/files.h"
#include "platform/cocoa/retained.h"

namespace morvella {

namespace {

class MappedContents : public FileContents {
  public:
    explicit MappedContents(NSData* data) : data_(data) {}
    [[nodiscard]] std::string_view bytes() const override {
        return {static_cast<const char*>([data_.get() bytes]), [data_.get() length]};
    }

  private:
    Retained<NSData*> data_;
};

}  // namespace

FileUrl CocoaFiles::fileUrl(const std::string& path) const {
    BOOL isDirectory = NO;
    [[NSFileManager defaultManager] fileExistsAtPath:stringOf(path) isDirectory:&isDirectory];
    return isDirectory ? FileUrl::directory(path) : FileUrl::file(path);
}

bool CocoaFiles::isReachable(const FileUrl& url, ErrorOut error) const {
    NSError* platformError = nil;
    // The platform would take an empty path for the current folder.
    const bool reachable =
        !url.path().empty() && [urlOf(url) checkResourceIsReachableAndReturnError:&platformError];
    if (!reachable) {
        writeError(platformError, error);
    }
    return reachable;
}

bool CocoaFiles::fileExists(const std::string& path) const {
    return [[NSFileManager defaultManager] fileExistsAtPath:stringOf(path)];
}

bool CocoaFiles::isReadable(const std::string& path) const {
    return [[NSFileManager defaultManager] isReadableFileAtPath:stringOf(path)];
}

bool CocoaFiles::isWritable(const std::string& path) const {
    return [[NSFileManager defaultManager] isWritableFileAtPath:stringOf(path)];
}

std::optional<std::vector<std::string>> CocoaFiles::contentsOfDirectory(
    const std::string& path) const {
    NSArray* listed = [[NSFileManager defaultManager] contentsOfDirectoryAtPath:stringOf(path)
                                                                          error:NULL];
    if (!listed) {
        return std::nullopt;
    }
    std::vector<std::string> names;
    names.reserve([listed count]);
    for (NSString* name in listed) {
        names.push_back(textOf(name));
    }
    return names;
}

std::shared_ptr<const FileContents> CocoaFiles::contentsOfFile(const std::string& path) const {
    NSData* data = [NSData dataWithContentsOfFile:stringOf(path)
                                          options:NSDataReadingMappedIfSafe
                                            error:NULL];
    return data ? std::make_shared<const MappedContents>(data) : nullptr;
}

bool CocoaFileChanges::createDirectory(const FileUrl& url, ErrorOut error) {
    NSError* platformError = nil;
    const bool created = [[NSFileManager defaultManager] createDirectoryAtURL:urlOf(url)
                                                  withIntermediateDirectories:YES
                                                                   attributes:nil
                                                                        error:&platformError];
    if (!created) {
        writeError(platformError, error);
    }
    return created;
}

bool CocoaFileChanges::copyItem(const FileUrl& source, const FileUrl& target, ErrorOut error) {
    NSError* platformError = nil;
    const bool copied = [[NSFileManager defaultManager] copyItemAtURL:urlOf(source)
                                                                toURL:urlOf(target)
                                                                error:&platformError];
    if (!copied) {
        writeError(platformError, error);
    }
    return copied;
}

bool CocoaFileChanges::moveItem(const FileUrl& source, const FileUrl& target, ErrorOut error) {
    NSError* platformError = nil;
    const bool moved = [[NSFileManager defaultManager] moveItemAtURL:urlOf(source)
                                                               toURL:urlOf(target)
                                                               error:&platformError];
    if (!moved) {
        writeError(platformError, error);
    }
    return moved;
}

bool CocoaFileChanges::trashItem(const FileUrl& url, ErrorOut error) {
    NSError* platformError = nil;
    const bool trashed = [[NSFileManager defaultManager] trashItemAtURL:urlOf(url)
                                                       resultingItemURL:NULL
                                                                  error:&platformError];
    if (!trashed) {
        writeError(platformError, error);
    }
    return trashed;
}

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
    NSError* platformError = nil;
    NSURL* found = [[NSFileManager defaultManager]
          URLForDirectory:static_cast<NSSearchPathDirectory>(directory)
                 inDomain:static_cast<NSSearchPathDomainMask>(domain)
        appropriateForURL:nil
                   create:NO
                    error:&platformError];
    if (!found) {
        writeError(platformError, error);
        return std::nullopt;
    }
    return FileUrl::directory(textOf([found path]));
}

}  // namespace morvella
