#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class BackupTest : public InstallerTest {
  protected:
    BackupTest() {
        disk.addFolder("/UL/Morvella");
        controller.setUserLibPath(text("/UL"));
        clock.stamp = "2021-03-03(140509)";
    }

    const std::string packing =
        packs("/UL/Morvella", "/UL/MorvellaBackup-2021-03-03(140509).zip", "/UL");
};

TEST_F(BackupTest, PacksTheInstallationBesideItself) {
    EXPECT_TRUE(controller.makeZipBackup());
    expectEverything({
        "asked: reachable /UL/Morvella/",
        "asked: the second 1234567890 as \"yyyy-MM-dd(HHmmss)\"",
        "asked: readable /UL/Morvella",
        "asked: writable /UL",
        packing,
    });
}

TEST_F(BackupTest, AddsNoSecondSlashToTheUserLibrary) {
    controller.setUserLibPath(text("/UL/"));
    EXPECT_TRUE(controller.makeZipBackup());
    EXPECT_EQ(journal.only({Kind::command}), lines({packing + "/"}));
}

TEST_F(BackupTest, FailsWithoutAPreviousInstallation) {
    disk.remove("/UL/Morvella");
    EXPECT_FALSE(controller.makeZipBackup());
    expectEverything({
        "asked: reachable /UL/Morvella/",
        "log: No previous installation of Morvella found at /UL/Morvella",
    });
}

TEST_F(BackupTest, FailsIfTheFolderIsNotReadable) {
    disk.items["/UL/Morvella"].readable = false;
    EXPECT_FALSE(controller.makeZipBackup());
    expectEverything({
        "asked: reachable /UL/Morvella/",
        "asked: the second 1234567890 as \"yyyy-MM-dd(HHmmss)\"",
        "asked: readable /UL/Morvella",
        "log: Making backup failed",
    });
}

TEST_F(BackupTest, FailsIfTheUserLibraryIsNotWritable) {
    disk.items["/UL"].writable = false;
    EXPECT_FALSE(controller.makeZipBackup());
    expectEffects({"log: Making backup failed"});
}

TEST_F(BackupTest, FailsSilentlyIfPackingFails) {
    tasks.results["/UL/MorvellaBackup-2021-03-03(140509).zip"] =
        TaskResult{.terminationStatus = 1, .output = "disk full"};
    EXPECT_FALSE(controller.makeZipBackup());
    expectEffects({packing});
}

}  // namespace

}  // namespace morvella::tests
