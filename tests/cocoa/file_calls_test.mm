#import <Foundation/Foundation.h>
#include <gtest/gtest.h>
#import <objc/runtime.h>

#include "cocoa/recorder.h"
#include "cocoa/temporary_folder.hpp"
#include "platform/cocoa/conversions.h"
#include "platform/cocoa/files.h"

#include <functional>
#include <map>
#include <tuple>

/// What the adapters make of answers that Foundation rarely gives. Its methods are replaced by ones
/// that give them.
namespace morvella::cocoa_tests {

namespace {

/// What a replaced method does with its error argument, and what it returns.
std::function<BOOL(NSError**)> answer;

template <class... Arguments>
BOOL answerWithError(id, SEL, Arguments... arguments) {
    return answer(std::get<sizeof...(arguments) - 1>(std::tuple(arguments...)));
}

NSURL* answerFolder(NSFileManager*, SEL, NSUInteger, NSUInteger, NSURL*, BOOL, NSError** error) {
    return answer(error) ? [NSURL fileURLWithPath:@"/folder" isDirectory:YES] : nil;
}

/// Replaces an existing method for as long as the result lives.
template <class Function>
Replaced replaced(Class owner, SEL selector, Function* function) {
    const Method before = class_getInstanceMethod(owner, selector);
    return {owner, selector, function, method_getTypeEncoding(before)};
}

class PlatformErrorsTest : public ::testing::Test {
  protected:
    using Operation = std::function<bool(ErrorOut)>;

    ~PlatformErrorsTest() override { answer = nullptr; }

    const FileUrl one = FileUrl::file("/one");
    const FileUrl two = FileUrl::file("/two");
    CocoaFiles files;
    CocoaFileChanges changes;
    CocoaStandardFolders folders;

    /// Every operation that can report an error.
    const std::map<std::string, Operation> operations = {
        {"reachable", [this](ErrorOut error) { return files.isReachable(one, error); }},
        {"create", [this](ErrorOut error) { return changes.createDirectory(one, error); }},
        {"copy", [this](ErrorOut error) { return changes.copyItem(one, two, error); }},
        {"move", [this](ErrorOut error) { return changes.moveItem(one, two, error); }},
        {"trash", [this](ErrorOut error) { return changes.trashItem(one, error); }},
        {"folder",
         [this](ErrorOut error) {
             return folders.url(StandardDirectory::users, Domain::local, error).has_value();
         }},
    };

  private:
    const Class manager_ = [NSFileManager class];
    const Replaced reachable_ =
        replaced([NSURL class], @selector(checkResourceIsReachableAndReturnError:),
                 &answerWithError<NSError**>);
    const Replaced create_ = replaced(
        manager_, @selector(createDirectoryAtURL:withIntermediateDirectories:attributes:error:),
        &answerWithError<NSURL*, BOOL, NSDictionary*, NSError**>);
    const Replaced copy_ = replaced(manager_, @selector(copyItemAtURL:toURL:error:),
                                    &answerWithError<NSURL*, NSURL*, NSError**>);
    const Replaced move_ = replaced(manager_, @selector(moveItemAtURL:toURL:error:),
                                    &answerWithError<NSURL*, NSURL*, NSError**>);
    const Replaced trash_ = replaced(manager_, @selector(trashItemAtURL:resultingItemURL:error:),
                                     &answerWithError<NSURL*, NSURL**, NSError**>);
    const Replaced folder_ =
        replaced(manager_, @selector(URLForDirectory:inDomain:appropriateForURL:create:error:),
                 &answerFolder);
};

TEST_F(PlatformErrorsTest, ReachTheCallerWhateverTheResult) {
    NSError* given = [NSError errorWithDomain:@"OddDomain" code:4711 userInfo:nil];
    for (const BOOL result : {NO, YES}) {
        for (NSError* each : {static_cast<NSError*>(nil), given}) {
            answer = [&](NSError** place) {
                if (place && each) {
                    *place = each;
                }
                return result;
            };
            for (const auto& [name, operation] : operations) {
                std::optional<Error> error = Error{"earlier"};
                EXPECT_EQ(operation(&error), result) << name;
                EXPECT_EQ(error->description, each ? textOf([given description]) : "earlier")
                    << name;
            }
        }
    }
}

TEST_F(PlatformErrorsTest, AreNotRequestedIfTheCallerDoesNotAsk) {
    answer = [](NSError** place) {
        EXPECT_EQ(place, nullptr);
        return YES;
    };
    for (const auto& [name, operation] : operations) {
        EXPECT_TRUE(operation(nullptr)) << name;
    }
}

/// A copy that reports failure after it has written a file.
class FailedCopyTest : public ::testing::Test {
  protected:
    void copy(NSString* written) {
        static NSString* toWrite;
        toWrite = written;
        const auto writeAndFail = +[](NSFileManager*, SEL, NSURL*, NSURL* target, NSError**) {
            [[toWrite dataUsingEncoding:NSUTF8StringEncoding] writeToURL:target atomically:NO];
            return NO;
        };
        const Replaced copying =
            replaced([NSFileManager class], @selector(copyItemAtURL:toURL:error:), writeAndFail);
        folder.addFile("from", "whole");
        EXPECT_FALSE(CocoaFileChanges().copyItem(FileUrl::file(folder.at("from")),
                                                 FileUrl::file(folder.at("to")), nullptr));
    }

    TemporaryFolder folder;
};

TEST_F(FailedCopyTest, IsRemovedIfIncomplete) {
    copy(@"who");
    EXPECT_EQ(folder.tree(""), std::vector<std::string>{"from: whole"});
}

TEST_F(FailedCopyTest, StaysIfComplete) {
    copy(@"whole");
    EXPECT_EQ(folder.contents("to"), "whole");
}

TEST_F(FailedCopyTest, LeavesWhatWasThereBefore) {
    folder.addFile("to", "mine");
    copy(nil);
    EXPECT_EQ(folder.contents("to"), "mine");
}

/// Records the messages to the system's file manager.
class FileCallsTest : public ::testing::Test {
  protected:
    FileCallsTest() { takeRecorded(); }

    CocoaFiles files;
    CocoaStandardFolders folders;
    std::optional<Error> error;
    Recorder* manager = [Recorder named:"files" standingFor:[NSFileManager class]];

  private:
    Answering answering_ { [NSFileManager class], @selector(defaultManager), manager };
};

TEST_F(FileCallsTest, ListingKeepsTheOrderOfTheSystem) {
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
                           @selector(dataWithContentsOfFile:options:error:), contentsOf, "@@:@Q^@");
    EXPECT_EQ(files.contentsOfFile("/a"), std::nullopt);
}

TEST_F(FileCallsTest, StandardFoldersAreNotCreatedAndNameDirectories) {
    NSURL* documents = [NSURL fileURLWithPath:@"/a b/Documents" isDirectory:NO];
    NSURL* shared = [NSURL fileURLWithPath:@"/Users" isDirectory:YES];
    [manager answer:documents
                 to:@selector(URLForDirectory:inDomain:appropriateForURL:create:error:)];
    [manager answer:@[ shared, documents ] to:@selector(URLsForDirectory:inDomains:)];
    const FileUrl expected = FileUrl::directory("/a b/Documents");
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
