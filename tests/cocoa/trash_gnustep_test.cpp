#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "cocoa/temporary_folder.hpp"
#include "platform/cocoa/files.h"

namespace morvella::cocoa_tests {

namespace {

namespace fs = std::filesystem;

using Tree = std::vector<std::string>;

/// The Trash in the process's home folder, which can be a temporary one here: on a Mac the user's
/// own would be filled.
class HomeTrashTest : public ::testing::Test {
  protected:
    HomeTrashTest() { fs::remove_all(trash()); }
    ~HomeTrashTest() override { fs::remove_all(trash()); }

    static fs::path trash() { return fs::path(std::getenv("HOME")) / ".local/share/Trash"; }

    bool moveToTrash(const FileUrl& url) { return CocoaFileChanges().trashItem(url, nullptr); }

    /// What the Trash holds, moved to where a tree can be taken of it.
    Tree trashed() {
        fs::remove_all(folder.at("trash"));
        fs::copy(trash() / "files", folder.at("trash"), fs::copy_options::recursive);
        return folder.tree("trash");
    }

    TemporaryFolder folder;
};

TEST_F(HomeTrashTest, HoldsWhatWasMovedToIt) {
    folder.addFile("home/Music/User Library/Morvella/Presets/mine.adv", "mine");
    folder.addFile("home/single", "file");
    EXPECT_TRUE(moveToTrash(FileUrl::directory(folder.at("home/Music/User Library/Morvella"))));
    EXPECT_TRUE(moveToTrash(FileUrl::file(folder.at("home/single"))));
    EXPECT_EQ(trashed(), (Tree{"Morvella/", "Morvella/Presets/", "Morvella/Presets/mine.adv: mine",
                               "single: file"}));
}

TEST_F(HomeTrashTest, KeepsItemsOfTheSameNameApart) {
    for (const char* contents : {"first", "second"}) {
        folder.addFile("home/file", contents);
        EXPECT_TRUE(moveToTrash(FileUrl::file(folder.at("home/file"))));
    }
    EXPECT_EQ(trashed().size(), 2U);
}

TEST_F(HomeTrashTest, TakesFilesAndFoldersOfAnyName) {
    Tree names = difficultNames();
    names.push_back("\xC3\xBC composed");
    for (const std::string& name : names) {
        const std::string item = "home/items/" + name;
        folder.addFile(item + "/inner", "text");
        EXPECT_TRUE(moveToTrash(FileUrl::directory(folder.at(item)))) << name;
        folder.addFile(item, "text");
        EXPECT_TRUE(moveToTrash(FileUrl::file(folder.at(item)))) << name;
    }
    EXPECT_EQ(folder.tree("home/items"), Tree());
}

TEST_F(HomeTrashTest, TakesALinkAndNotWhatItLeadsTo) {
    folder.addFile("home/target/file", "kept");
    fs::create_symlink("target", folder.at("home/link"));
    fs::create_symlink("nowhere", folder.at("home/dangling"));
    EXPECT_TRUE(moveToTrash(FileUrl::file(folder.at("home/link"))));
    EXPECT_TRUE(moveToTrash(FileUrl::file(folder.at("home/dangling"))));
    EXPECT_FALSE(folder.holds("home/link"));
    EXPECT_FALSE(folder.holds("home/dangling"));
    EXPECT_EQ(folder.contents("home/target/file"), "kept");
}

}  // namespace

}  // namespace morvella::cocoa_tests
