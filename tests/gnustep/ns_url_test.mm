#include <gtest/gtest.h>

#include <unistd.h>

#include "cocoa/temporary_folder.hpp"
#include "gnustep/texts.hpp"

namespace morvella::gnustep_tests {

namespace {

using cocoa_tests::OrdinaryUser;
using cocoa_tests::TemporaryFolder;

/// Whether `url` is reachable, and that the error says so.
bool isReachable(NSURL* url) {
    NSError* error = untouched();
    const bool reachable = [url checkResourceIsReachableAndReturnError:&error];
    EXPECT_EQ(error == untouched(), reachable) << text([error localizedDescription]);
    EXPECT_EQ([url checkResourceIsReachableAndReturnError:NULL], reachable);
    return reachable;
}

TEST(UrlTest, ReachesWhateverIsThereUnderAnyName) {
    const TemporaryFolder folder;
    for (const std::string& name : cocoa_tests::difficultNames()) {
        EXPECT_FALSE(isReachable(fileUrl(folder.at(name)))) << name;
        folder.addFile(name);
        EXPECT_TRUE(isReachable(fileUrl(folder.at(name)))) << name;
    }
    EXPECT_TRUE(isReachable(folderUrl(folder.path())));
}

TEST(UrlTest, ReachesASymbolicLinkThatLeadsNowhere) {
    const TemporaryFolder folder;
    ASSERT_EQ(symlink("/no such folder/at all", folder.at("link").c_str()), 0);
    EXPECT_TRUE(isReachable(fileUrl(folder.at("link"))));
    EXPECT_FALSE(isReachable(fileUrl(folder.at("link/below"))));
}

TEST(UrlTest, ReachesWhatCannotBeRead) {
    const TemporaryFolder folder;
    folder.addFile("file");
    folder.addFolder("closed/inner");
    chmod(folder.path().c_str(), 0755);
    chmod(folder.at("file").c_str(), 0);
    chmod(folder.at("closed").c_str(), 0);
    {
        const OrdinaryUser user;
        EXPECT_TRUE(isReachable(fileUrl(folder.at("file"))));
        EXPECT_TRUE(isReachable(folderUrl(folder.at("closed"))));
        EXPECT_FALSE(isReachable(folderUrl(folder.at("closed/inner"))));
    }
    chmod(folder.at("closed").c_str(), 0755);
}

TEST(UrlTest, SaysWhatIsNotReachableAndWhy) {
    const TemporaryFolder folder;
    folder.addFile("file");
    NSError* error = nil;
    [fileUrl(folder.at("file/below")) checkResourceIsReachableAndReturnError:&error];
    EXPECT_EQ(text([error localizedDescription]),
              "“" + folder.at("file/below") + "” is not reachable: Not a directory.");
}

}  // namespace

}  // namespace morvella::gnustep_tests
