#include <cstdlib>
#include <filesystem>

#include "cocoa/real_files_test.hpp"

namespace morvella::cocoa_tests {

namespace {

namespace fs = std::filesystem;

using Tree = std::vector<std::string>;

/// The Trash in the process's home folder.
class HomeTrashTest : public RealFilesTest {
  protected:
    HomeTrashTest() { fs::remove_all(trash()); }
    ~HomeTrashTest() override { fs::remove_all(trash()); }

    static fs::path trash() { return fs::path(std::getenv("HOME")) / ".local/share/Trash"; }

    /// What the Trash holds, moved to where a tree can be taken of it.
    Tree trashed() {
        fs::remove_all(folder.at("trash"));
        fs::copy(trash() / "files", folder.at("trash"), fs::copy_options::recursive);
        return folder.tree("trash");
    }
};

TEST_F(HomeTrashTest, HoldsWhatWasMovedToIt) {
    folder.addFile("home/Music/User Library/Morvella/Presets/mine.adv", "mine");
    folder.addFile("home/single", "file");
    EXPECT_TRUE(installer.moveToTrash(destination));
    EXPECT_TRUE(installer.moveToTrash(FileUrl::file(folder.at("home/single"))));
    EXPECT_EQ(trashed(), (Tree{"Morvella/", "Morvella/Presets/", "Morvella/Presets/mine.adv: mine",
                               "single: file"}));
}

TEST_F(HomeTrashTest, KeepsItemsOfTheSameNameApart) {
    for (const char* contents : {"first", "second"}) {
        folder.addFile("home/file", contents);
        EXPECT_TRUE(installer.moveToTrash(FileUrl::file(folder.at("home/file"))));
    }
    EXPECT_EQ(trashed().size(), 2U);
}

}  // namespace

}  // namespace morvella::cocoa_tests
