#include <filesystem>

#include "cocoa/real_files_test.hpp"

namespace morvella::cocoa_tests {

namespace {

namespace fs = std::filesystem;

using fakes::Kind;
using fakes::lines;

/// The installation page on real files, from the question about a previous installation to the end.
class PreviousInstallationFilesTest : public RealFilesTest {
  protected:
    PreviousInstallationFilesTest() { makePayload(); }

    void addPreviousInstallation() {
        folder.addFile("home/Music/User Library/Morvella/.Morvella.app/old", "old");
        folder.addFile("home/Music/User Library/Morvella/Presets/mine.adv", "mine");
    }

    void answerAndInstall(int response, ControlState checkBox) {
        installer.doInstallViewAppeared();
        window->answer(response, checkBox);
        runLoop.drainMainQueue();
    }

    void expectInstalled() {
        EXPECT_TRUE(installer.checkInstall(destination));
        EXPECT_EQ(viewController.shown, postInstallView);
        EXPECT_EQ(folder.contents("home/Music/User Library/Morvella/Sources/Vellicor.amxd"),
                  "the device");
    }

    const std::string backup = "home/Music/User Library/MorvellaBackup-2009-02-13(233130).zip";
};

TEST_F(PreviousInstallationFilesTest, WithoutOneEverythingIsInstalledAtOnce) {
    installer.doInstallViewAppeared();
    EXPECT_EQ(journal.only({Kind::sheet}), "");
    expectInstalled();
}

TEST_F(PreviousInstallationFilesTest, IsBackedUpTrashedAndReplaced) {
    addPreviousInstallation();
    answerAndInstall(1000, ControlState::on);
    expectInstalled();
    EXPECT_TRUE(folder.holds(backup));
    EXPECT_FALSE(folder.holds("home/Music/User Library/Morvella/Presets/mine.adv"));
    EXPECT_FALSE(folder.holds("home/Music/User Library/Morvella/.Morvella.app/old"));
}

TEST_F(PreviousInstallationFilesTest, IsOnlyTrashedWithoutBackup) {
    addPreviousInstallation();
    answerAndInstall(1000, ControlState::off);
    expectInstalled();
    EXPECT_FALSE(folder.holds(backup));
    EXPECT_FALSE(folder.holds("home/Music/User Library/Morvella/Presets/mine.adv"));
}

TEST_F(PreviousInstallationFilesTest, StaysUntouchedWhenTheUserQuits) {
    addPreviousInstallation();
    const auto before = folder.tree("");
    answerAndInstall(1001, ControlState::on);
    EXPECT_EQ(folder.tree(""), before);
}

TEST_F(PreviousInstallationFilesTest, ThatCannotBeTrashedIsInstalledOver) {
    addPreviousInstallation();
    changes.failing = {"trash " + destination.path()};
    answerAndInstall(1000, ControlState::off);
    EXPECT_EQ(journal.only({Kind::sheet}),
              lines({"sheet: warning \"Previous installation of Morvella must be deleted.\" "
                     "[Continue] [Quit], help, check box \"Make a zip backup of the current "
                     "Morvella folder.\nBackups are located in the user library folder.\" on, with "
                     "new indicator",
                     "sheet: critical \"Couldn't move Morvella folder to trash.\" [Quit]",
                     "sheet: critical \"Old Morvella folder still presists, aborting.\" [Quit]"}));
    expectInstalled();
    EXPECT_EQ(folder.contents("home/Music/User Library/Morvella/Presets/mine.adv"), "mine");
}

TEST_F(PreviousInstallationFilesTest, MayBeAFile) {
    folder.addFile("home/Music/User Library/Morvella", "a plain file");
    answerAndInstall(1000, ControlState::off);
    expectInstalled();
}

TEST_F(PreviousInstallationFilesTest, MayBeALinkWhoseTargetStays) {
    folder.addFile("home/Elsewhere/mine.adv", "mine");
    fs::create_directory_symlink(folder.at("home/Elsewhere"), destination.path());
    answerAndInstall(1000, ControlState::off);
    expectInstalled();
    EXPECT_EQ(folder.tree("home/Elsewhere"), std::vector<std::string>{"mine.adv: mine"});
}

TEST_F(PreviousInstallationFilesTest, MayBeALinkThatLeadsNowhere) {
    fs::create_symlink(folder.at("home/nowhere"), destination.path());
    answerAndInstall(1000, ControlState::off);
    expectInstalled();
    EXPECT_FALSE(folder.holds("home/nowhere"));
}

}  // namespace

}  // namespace morvella::cocoa_tests
