#include <algorithm>
#include <filesystem>

#include "cocoa/real_files_test.hpp"

namespace morvella::cocoa_tests {

namespace {

namespace fs = std::filesystem;

using Tree = std::vector<std::string>;

/// Backups and the Trash on real files.
class RemovalFilesTest : public RealFilesTest {
  protected:
    /// What is in the User Library, by name.
    [[nodiscard]] Tree namesInLibrary() const {
        Tree names;
        for (const auto& entry : fs::directory_iterator(library)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }
};

TEST_F(RemovalFilesTest, BackupHoldsTheInstallationAsItIs) {
    folder.addFile("home/Music/User Library/Morvella/Presets/my \xF0\x9F\x8E\xB9.adv", "mine");
    folder.addFile("home/Music/User Library/Morvella/.Morvella.app/Contents/x", "hidden");
    EXPECT_TRUE(installer.makeZipBackup());
    EXPECT_EQ(namesInLibrary(), (Tree{"Morvella", "MorvellaBackup-2009-02-13(233130).zip"}));
    bundles.main->resources["backup"] = library + "/MorvellaBackup-2009-02-13(233130).zip";
    folder.addFolder("out");
    ASSERT_TRUE(installer.decompressResourceToURL("backup", FileUrl::directory(folder.at("out"))));
    EXPECT_EQ(folder.tree("out/Morvella"), folder.tree("home/Music/User Library/Morvella"));
    EXPECT_EQ(folder.contents("out/Morvella/Presets/my \xF0\x9F\x8E\xB9.adv"), "mine");
}

TEST_F(RemovalFilesTest, BackupOfNothingWritesNothing) {
    EXPECT_FALSE(installer.makeZipBackup());
    EXPECT_EQ(namesInLibrary(), Tree());
    EXPECT_EQ(logged(),
              "log: No previous installation of Morvella found at STAGE/home/Music/User "
              "Library/Morvella\n");
}

TEST_F(RemovalFilesTest, BackupInAClosedUserLibraryWritesNothing) {
    folder.addFile("home/Music/User Library/Morvella/file", "kept");
    fs::permissions(library, fs::perms(0555));
    {
        const OrdinaryUser user;
        EXPECT_FALSE(installer.makeZipBackup());
    }
    EXPECT_EQ(logged(), "log: Making backup failed\n");
    EXPECT_EQ(namesInLibrary(), Tree{"Morvella"});
}

TEST_F(RemovalFilesTest, BackupOfAnUnreadableFolderWritesNothing) {
    folder.addFolder("home/Music/User Library/Morvella");
    fs::permissions(library, fs::perms::all);
    fs::permissions(library + "/Morvella", fs::perms::none);
    {
        const OrdinaryUser user;
        EXPECT_FALSE(installer.makeZipBackup());
    }
    EXPECT_EQ(logged(), "log: Making backup failed\n");
    EXPECT_EQ(namesInLibrary(), Tree{"Morvella"});
}

TEST_F(RemovalFilesTest, TrashOfWhatIsNotThereFailsWithTheUrl) {
    EXPECT_FALSE(installer.moveToTrash(FileUrl::file(folder.at("not \xC3\xBC there"))));
    EXPECT_EQ(logged(), "log: failed to move to trash:file://STAGE/not%20%C3%BC%20there\n");
}

TEST_F(RemovalFilesTest, ListedItemsGoToTheTrashUpToTheFirstThatStays) {
    for (const char* name : {"a b", "c%20d", "sub/e", "f"}) {
        folder.addFile(std::string("home/list/") + name, name);
    }
    const FileUrl list = FileUrl::directory(folder.at("home/list"));
    EXPECT_TRUE(installer.removeFilesFromFolder({}, list));
    EXPECT_TRUE(installer.removeFilesFromFolder({"a b", "missing"}, list));
    changes.failing = {"trash " + folder.at("home/list/c%20d")};
    EXPECT_FALSE(installer.removeFilesFromFolder({"c%20d", "sub/e", "f"}, list));
    EXPECT_EQ(folder.tree("home/list"), (Tree{"c%20d: c%20d", "f: f", "sub/", "sub/e: sub/e"}));
    EXPECT_EQ(logged(), "log: failed to move to trash:file://STAGE/home/list/c%2520d\n");
}

TEST_F(RemovalFilesTest, AFolderThatStaysIsNamedAsAFolder) {
    folder.addFolder("home/list/sub/folder");
    changes.failing = {"trash " + folder.at("home/list/sub/folder")};
    EXPECT_FALSE(installer.removeFilesFromFolder({"sub/folder"},
                                                 FileUrl::directory(folder.at("home/list"))));
    EXPECT_EQ(logged(), "log: failed to move to trash:file://STAGE/home/list/sub/folder/\n");
}

}  // namespace

}  // namespace morvella::cocoa_tests
