#import <Foundation/Foundation.h>
#include <gtest/gtest.h>
#include <objc/runtime.h>

#include "cocoa/recorder.h"
#include "cocoa/temporary_folder.hpp"
#include "platform/cocoa/conversions.h"
#include "platform/cocoa/files.h"

#include <functional>

/// What the adapters make of results and errors that Foundation can give but seldom does: its
/// methods are exchanged for ones that give them.
namespace morvella::cocoa_tests {

namespace {

/// What an exchanged method does with the place for an error that it is given, and returns.
std::function<BOOL(NSError**)> answer;

BOOL answerReachable(NSURL*, SEL, NSError** error) {
    return answer(error);
}

BOOL answerCreate(NSFileManager*, SEL, NSURL*, BOOL, NSDictionary*, NSError** error) {
    return answer(error);
}

BOOL answerTwoUrls(NSFileManager*, SEL, NSURL*, NSURL*, NSError** error) {
    return answer(error);
}

BOOL answerTrash(NSFileManager*, SEL, NSURL*, NSURL**, NSError** error) {
    return answer(error);
}

NSURL* answerFolder(NSFileManager*, SEL, NSUInteger, NSUInteger, NSURL*, BOOL, NSError** error) {
    return answer(error) ? [NSURL fileURLWithPath:@"/folder" isDirectory:YES] : nil;
}

/// Another implementation of a method that there is, as long as it lives.
template <class Function>
Replaced exchanged(Class owner, SEL selector, Function* function) {
    const Method before = class_getInstanceMethod(owner, selector);
    const char* types = before ? method_getTypeEncoding(before) : nullptr;
    return {owner, selector, reinterpret_cast<IMP>(function), types};
}

/// An error whose description is more than its sentence for the user.
NSError* makeError() {
    NSDictionary* info = [NSDictionary
        dictionaryWithObjectsAndKeys:@"It did not work.", NSLocalizedDescriptionKey, nil];
    return [NSError errorWithDomain:@"OddDomain" code:4711 userInfo:info];
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

    /// Everything that can hand out an error.
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
    const Replaced reachable_ = exchanged(
        [NSURL class], @selector(checkResourceIsReachableAndReturnError:), &answerReachable);
    const Replaced create_ = exchanged([NSFileManager class],
                                       @selector(createDirectoryAtURL:
                                           withIntermediateDirectories:attributes:error:),
                                       &answerCreate);
    const Replaced copy_ =
        exchanged([NSFileManager class], @selector(copyItemAtURL:toURL:error:), &answerTwoUrls);
    const Replaced move_ =
        exchanged([NSFileManager class], @selector(moveItemAtURL:toURL:error:), &answerTwoUrls);
    const Replaced trash_ = exchanged(
        [NSFileManager class], @selector(trashItemAtURL:resultingItemURL:error:), &answerTrash);
    const Replaced folder_ = exchanged(
        [NSFileManager class], @selector(URLForDirectory:inDomain:appropriateForURL:create:error:),
        &answerFolder);
};

TEST_F(PlatformErrorsTest, AreWrittenWheneverThePlatformHandsOneOut) {
    for (const BOOL result : {NO, YES}) {
        answer = [result](NSError** error) {
            if (error) {
                *error = makeError();
            }
            return result;
        };
        for (const auto& [name, operation] : operations) {
            std::optional<Error> error = Error{"earlier"};
            EXPECT_EQ(operation(&error), result) << name;
            EXPECT_EQ(error, Error{textOf([makeError() description])}) << name;
        }
    }
}

TEST_F(PlatformErrorsTest, AreLeftAloneIfThePlatformHandsNoneOut) {
    for (const BOOL result : {NO, YES}) {
        answer = [result](NSError**) { return result; };
        for (const auto& [name, operation] : operations) {
            std::optional<Error> error = Error{"earlier"};
            EXPECT_EQ(operation(&error), result) << name;
            EXPECT_EQ(error, Error{"earlier"}) << name;
        }
    }
}

TEST_F(PlatformErrorsTest, AreNotAskedForIfNobodyAsks) {
    for (const BOOL result : {NO, YES}) {
        answer = [result](NSError** error) {
            EXPECT_EQ(error, nullptr);
            return result;
        };
        for (const auto& [name, operation] : operations) {
            EXPECT_EQ(operation(nullptr), result) << name;
        }
    }
}

TEST_F(PlatformErrorsTest, AreDescribedByMoreThanTheirSentence) {
    answer = [](NSError** error) {
        if (error) {
            *error = makeError();
        }
        return NO;
    };
    std::optional<Error> error;
    EXPECT_FALSE(changes.moveItem(one, two, &error));
    ASSERT_TRUE(error.has_value());
    for (const char* part : {"OddDomain", "4711", "It did not work."}) {
        EXPECT_NE(error->description.find(part), std::string::npos) << error->description;
    }
}

/// A copy that cannot be finished, made of the real one.
class UnfinishedCopyTest : public ::testing::Test {
  protected:
    /// Copies "from" to "to" and fails then, with "to" in whatever state it is.
    static BOOL copyAndFail(NSFileManager*, SEL, NSURL*, NSURL* target, NSError** error) {
        const bool isThere = [target checkResourceIsReachableAndReturnError:NULL];
        if (!isThere) {
            [[NSData dataWithBytes:"part" length:4] writeToURL:target atomically:NO];
        }
        if (error) {
            *error = makeError();
        }
        return NO;
    }

    bool copy() {
        const Replaced copying =
            exchanged([NSFileManager class], @selector(copyItemAtURL:toURL:error:), &copyAndFail);
        return CocoaFileChanges().copyItem(FileUrl::file(folder.at("from")),
                                           FileUrl::file(folder.at("to")), &error);
    }

    TemporaryFolder folder;
    std::optional<Error> error;
};

TEST_F(UnfinishedCopyTest, LeavesNothingOfItselfBehind) {
    folder.addFile("from", "whole");
    folder.addFile("beside", "kept");
    EXPECT_FALSE(copy());
    EXPECT_EQ(error, Error{textOf([makeError() description])});
    EXPECT_EQ(folder.tree(""), (std::vector<std::string>{"beside: kept", "from: whole"}));
}

TEST_F(UnfinishedCopyTest, TakesNothingAwayThatWasThereBefore) {
    folder.addFile("from", "whole");
    folder.addFile("to/inner", "kept");
    EXPECT_FALSE(copy());
    EXPECT_EQ(folder.contents("to/inner"), "kept");
}

}  // namespace

}  // namespace morvella::cocoa_tests
