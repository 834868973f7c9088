#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "cocoa/recorder.h"
#include "cocoa/temporary_folder.hpp"
#include "platform/cocoa/conversions.h"
#include "platform/cocoa/files.h"

namespace morvella::cocoa_tests {

namespace {

/// What the replaced method writes to the target, sets as the error and returns.
struct Copy {
    NSString* written = nil;
    NSError* error = nil;
    BOOL result = NO;
} copy;

BOOL makeCopy(NSFileManager*, SEL, NSURL*, NSURL* target, NSError** error) {
    [[copy.written dataUsingEncoding:NSUTF8StringEncoding] writeToURL:target atomically:NO];
    if (error && copy.error) {
        *error = copy.error;
    }
    return copy.result;
}

/// A copy whose result and error may contradict each other and what was written.
class OddCopyTest : public ::testing::Test {
  protected:
    OddCopyTest() { folder.addFile("from", "whole"); }
    ~OddCopyTest() override { copy = {}; }

    bool copies(ErrorOut error = nullptr) {
        return CocoaFileChanges().copyItem(FileUrl::file(folder.at("from")),
                                           FileUrl::file(folder.at("to")), error);
    }

    TemporaryFolder folder;

  private:
    Replaced copying_ { [NSFileManager class], @selector(copyItemAtURL:toURL:error:), makeCopy };
};

TEST_F(OddCopyTest, ReportsResultAndErrorIndependently) {
    std::optional<Error> error = Error{"earlier"};
    copy = {.written = nil, .error = nil, .result = NO};
    EXPECT_FALSE(copies(&error));
    EXPECT_EQ(error->description, "earlier");
    copy.error = [NSError errorWithDomain:@"OddDomain" code:4711 userInfo:nil];
    copy.result = YES;
    EXPECT_TRUE(copies(&error));
    EXPECT_EQ(error->description, textOf([copy.error description]));
    EXPECT_TRUE(copies(nullptr));
}

TEST_F(OddCopyTest, RemovesOnlyAnIncompleteFile) {
    copy.written = @"who";
    EXPECT_FALSE(copies());
    EXPECT_EQ(folder.tree(""), std::vector<std::string>{"from: whole"});
    copy.written = @"whole";
    EXPECT_FALSE(copies());
    EXPECT_EQ(folder.contents("to"), "whole");
    copy.written = nil;
    folder.addFile("to", "mine");
    EXPECT_FALSE(copies());
    EXPECT_EQ(folder.contents("to"), "mine");
}

/// Records the messages sent to the default file manager.
class FileCallsTest : public ::testing::Test {
  protected:
    FileCallsTest() { takeRecorded(); }

    CocoaFiles files;
    Recorder* manager = [Recorder named:"files" replacing:[NSFileManager class]];

  private:
    Answering answering_ { [NSFileManager class], @selector(defaultManager), manager };
};

TEST_F(FileCallsTest, ListingKeepsTheSystemsOrder) {
    [manager answer:@[ @"b", @"C", @"a" ] to:@selector(contentsOfDirectoryAtPath:error:)];
    EXPECT_EQ(files.contentsOfDirectory("/x"), (std::vector<std::string>{"b", "C", "a"}));
}

NSData* contentsOf(id, SEL, NSString*, NSUInteger options, NSError**) {
    EXPECT_EQ(options, 0U);
    return nil;
}

/// Live may truncate its file while the installer reads it; a mapped file would then crash.
TEST_F(FileCallsTest, FilesAreNotMapped) {
    const Replaced reading(object_getClass([NSData class]),
                           @selector(dataWithContentsOfFile:options:error:), contentsOf);
    EXPECT_EQ(files.contentsOfFile("/a"), std::nullopt);
}

TEST_F(FileCallsTest, StandardFoldersAreDirectoriesAndAreNotCreated) {
    NSURL* documents = [NSURL fileURLWithPath:@"/a b/Documents" isDirectory:NO];
    NSURL* shared = [NSURL fileURLWithPath:@"/Users" isDirectory:YES];
    [manager answer:documents
                 to:@selector(URLForDirectory:inDomain:appropriateForURL:create:error:)];
    [manager answer:@[ shared, documents ] to:@selector(URLsForDirectory:inDomains:)];
    const FileUrl expected = FileUrl::directory("/a b/Documents");
    const CocoaStandardFolders folders;
    std::optional<Error> error;
    EXPECT_EQ(folders.url(StandardDirectory::documents, Domain::user, &error), expected);
    EXPECT_EQ(folders.urls(StandardDirectory::applications, Domain::local),
              (std::vector{FileUrl::directory("/Users"), expected}));
    Lines asked = takeRecorded();
    std::erase_if(asked, [](const std::string& line) { return !line.starts_with("files URL"); });
    EXPECT_EQ(asked, (Lines{"files URLForDirectory:inDomain:appropriateForURL:create:error: 9 1 "
                            "nil NO pointer",
                            "files URLsForDirectory:inDomains: 1 2"}));
}

}  // namespace

}  // namespace morvella::cocoa_tests
