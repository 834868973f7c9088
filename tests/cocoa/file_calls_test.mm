#import <Foundation/Foundation.h>
#include <gtest/gtest.h>
#import <objc/runtime.h>

#include "cocoa/recorder.h"
#include "cocoa/temporary_folder.hpp"
#include "platform/cocoa/files.h"

#include <sys/stat.h>

namespace morvella::cocoa_tests {

namespace {

mode_t modeOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status.st_mode & 0777;
}

TEST(CreatedFoldersTest, HaveTheModeThatTheMaskLeaves) {
    const TemporaryFolder folder;
    for (const mode_t mask : {mode_t{0027}, mode_t{0002}}) {
        const std::string outer = folder.at("outer" + std::to_string(mask));
        const mode_t before = umask(mask);
        EXPECT_TRUE(CocoaFileChanges().createDirectory(FileUrl::directory(outer + "/in"), nullptr));
        umask(before);
        EXPECT_EQ(modeOf(outer), 0777 & ~mask);
        EXPECT_EQ(modeOf(outer + "/in"), 0777 & ~mask);
    }
}

/// Records what the system's file manager is asked.
class FileCallsTest : public ::testing::Test {
  protected:
    FileCallsTest() { takeRecorded(); }

    /// All that was asked, but for what GNUstep asks by itself when it makes a URL.
    static Lines takeAsked() {
        Lines lines = takeRecorded();
        std::erase_if(lines, [](const std::string& line) {
            return line.starts_with("files fileExistsAtPath:isDirectory:");
        });
        return lines;
    }

    std::optional<Error> error;
    Recorder* manager = [Recorder named:"files" standingFor:[NSFileManager class]];

  private:
    Answering answering_ { [NSFileManager class], @selector(defaultManager), manager };
};

TEST_F(FileCallsTest, FoldersAreCreatedWithThoseAboveAndWithoutAttributes) {
    CocoaFileChanges().createDirectory(FileUrl::directory("/a/b"), &error);
    EXPECT_EQ(takeAsked(),
              (Lines{"files createDirectoryAtURL:withIntermediateDirectories:attributes:error: "
                     "file:///a/b/ YES nil pointer"}));
}

TEST_F(FileCallsTest, WhatIsNotThereIsNoFolder) {
    EXPECT_FALSE(CocoaFiles().fileUrl("/a").namesDirectory());
}

id contentsOf(id, SEL, NSString* path, NSUInteger options, NSError** error) {
    record([path UTF8String] + std::string(options == 0 ? " is read" : " is mapped") +
           (error ? ", why not is told" : ""));
    return nil;
}

TEST_F(FileCallsTest, AFileIsReadAndNotMapped) {
    const Replaced reading(object_getClass([NSData class]),
                           @selector(dataWithContentsOfFile:options:error:),
                           reinterpret_cast<IMP>(contentsOf), "@@:@Q^@");
    EXPECT_EQ(CocoaFiles().contentsOfFile("/a"), std::nullopt);
    EXPECT_EQ(takeAsked(), (Lines{"/a is read"}));
}

TEST_F(FileCallsTest, ItemsAreCopiedMovedAndPutIntoTheTrash) {
    CocoaFileChanges changes;
    changes.copyItem(FileUrl::file("/a"), FileUrl::file("/b"), &error);
    changes.moveItem(FileUrl::file("/c"), FileUrl::file("/d"), &error);
    changes.trashItem(FileUrl::directory("/e"), &error);
    EXPECT_EQ(takeAsked(),
              (Lines{"files copyItemAtURL:toURL:error: file:///a file:///b pointer",
                     "files removeItemAtURL:error: file:///b NULL",
                     "files moveItemAtURL:toURL:error: file:///c file:///d pointer",
                     "files trashItemAtURL:resultingItemURL:error: file:///e/ NULL pointer"}));
}

TEST_F(FileCallsTest, StandardFoldersAreAskedForAndNotMade) {
    CocoaStandardFolders().url(StandardDirectory::documents, Domain::user, &error);
    EXPECT_TRUE(
        CocoaStandardFolders().urls(StandardDirectory::applications, Domain::local).empty());
    EXPECT_EQ(takeAsked(),
              (Lines{"files URLForDirectory:inDomain:appropriateForURL:create:error: 9 1 nil NO "
                     "pointer",
                     "files URLsForDirectory:inDomains: 1 2"}));
}

TEST_F(FileCallsTest, StandardFoldersAreWhereTheSystemSays) {
    NSURL* documents = [NSURL fileURLWithPath:@"/a b/Documents" isDirectory:NO];
    NSURL* shared = [NSURL fileURLWithPath:@"/Users" isDirectory:YES];
    [manager answer:documents
                 to:@selector(URLForDirectory:inDomain:appropriateForURL:create:error:)];
    [manager answer:@[ shared, documents ] to:@selector(URLsForDirectory:inDomains:)];
    const auto found =
        CocoaStandardFolders().url(StandardDirectory::documents, Domain::user, &error);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->path(), "/a b/Documents");
    EXPECT_TRUE(found->namesDirectory());
    const auto all = CocoaStandardFolders().urls(StandardDirectory::users, Domain::local);
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].path(), "/Users");
    EXPECT_EQ(all[1].path(), "/a b/Documents");
}

}  // namespace

}  // namespace morvella::cocoa_tests
