#include <filesystem>

#include "cocoa/real_files_test.hpp"

namespace morvella::cocoa_tests {

namespace {

namespace fs = std::filesystem;

using tests::Kind;
using Tree = std::vector<std::string>;

/// Runs the installation page on real files.
class InstallationFilesTest : public RealFilesTest {
  protected:
    /// Runs the page and answers the question about a previous installation with Continue.
    void installOverPrevious(ControlState checkBox) {
        installer.doInstallViewAppeared();
        window->answer(1000, checkBox);
        runLoop.drainMainQueue();
    }

    void expectInstalled() {
        EXPECT_TRUE(installer.checkInstall(destination));
        EXPECT_EQ(viewController.shown, postInstallView);
        EXPECT_EQ(folder.tree("home/Music/User Library/Morvella"), suite);
        EXPECT_EQ(folder.tree("Applications/Morvella"), utility);
    }

    const Tree suite = {".Morvella.app/", ".Morvella.app/Contents/",
                        ".Morvella.app/Contents/Info.plist: the application", "Sources/",
                        "Sources/Vellicor.amxd: the device"};
    const Tree shaders = {"ISF/", "ISF/Dariwent/", "ISF/Dariwent/a.fs: shader a", "ISF/Standard/",
                          "ISF/Standard/b.fs: shader b"};
    const Tree utility = {"Tressimo.app/", "Tressimo.app/Contents/",
                          "Tressimo.app/Contents/Info.plist: the utility"};
    const std::string backup = "home/Music/User Library/MorvellaBackup-2009-02-13(233130).zip";
};

TEST_F(InstallationFilesTest, PutsEveryPieceInItsPlace) {
    installer.doInstallViewAppeared();
    expectInstalled();
    EXPECT_EQ(folder.tree("home/Library/Fonts"),
              (Tree{"Archivo-Medium.ttf: Archivo-Medium.ttf",
                    "OpenSans-Regular.ttf: OpenSans-Regular.ttf"}));
    EXPECT_EQ(folder.tree("Users/Shared/Morvella"), shaders);
    EXPECT_EQ(folder.tree("home/Documents"), Tree());
    EXPECT_EQ(journal.only({Kind::sheet}), "");
}

TEST_F(InstallationFilesTest, ReplacesEverythingButFontsAndSharedData) {
    folder.addFile("home/Music/User Library/Morvella/.Morvella.app/old", "old");
    folder.addFile("home/Music/User Library/Morvella/Presets/mine.adv", "mine");
    folder.addFile("home/Library/Fonts/Archivo-Medium.ttf", "mine");
    folder.addFile("Users/Shared/Morvella/ISF/Standard/b.fs", "mine");
    folder.addFile("Applications/Morvella/old", "old");
    installOverPrevious(ControlState::on);
    expectInstalled();
    EXPECT_TRUE(folder.holds(backup));
    EXPECT_EQ(folder.contents("home/Library/Fonts/Archivo-Medium.ttf"), "mine");
    EXPECT_EQ(folder.tree("Users/Shared/Morvella"),
              (Tree{"ISF/", "ISF/Standard/", "ISF/Standard/b.fs: mine"}));
}

TEST_F(InstallationFilesTest, PreviousInstallationMayBeAFileOrALink) {
    folder.addFile("home/Elsewhere/mine.adv", "mine");
    const fs::path product = destination.path();
    for (const int kind : {0, 1, 2}) {
        fs::remove_all(product);
        if (kind == 0) {
            folder.addFile("home/Music/User Library/Morvella", "a plain file");
        } else {
            fs::create_symlink(folder.at(kind == 1 ? "home/Elsewhere" : "home/nowhere"), product);
        }
        installOverPrevious(ControlState::off);
        expectInstalled();
    }
    EXPECT_FALSE(folder.holds(backup));
    EXPECT_EQ(folder.tree("home/Elsewhere"), Tree{"mine.adv: mine"});
    EXPECT_FALSE(folder.holds("home/nowhere"));
}

/// Until "Morvella" exists, a URL queried from the disk would not name a directory, and "ISF" would
/// resolve beside it, where the user may have a folder of that name.
TEST_F(InstallationFilesTest, ShadersInDocumentsLeaveTheUsersOwnFilesAlone) {
    fs::create_symlink("nowhere", folder.at("Users/Shared/Morvella"));
    const Tree userFiles = {"home/Documents/ISF/Dariwent/my.fs", "home/Documents/Dariwent/my.fs",
                            "Users/Morvella/my.fs"};
    for (const std::string& file : userFiles) {
        folder.addFile(file, "mine");
    }
    installer.installTo(destination);
    EXPECT_EQ(folder.tree("home/Documents/Morvella"), shaders);
    folder.addFile("home/Documents/Morvella/ISF/Dariwent/old.fs", "old");
    folder.addFile("home/Documents/Morvella/ISF/my.fs", "mine");
    installer.installTo(destination);
    EXPECT_FALSE(folder.holds("home/Documents/Morvella/ISF/Dariwent/old.fs"));
    EXPECT_EQ(folder.contents("home/Documents/Morvella/ISF/my.fs"), "mine");
    for (const std::string& file : userFiles) {
        EXPECT_EQ(folder.contents(file), "mine") << file;
    }
}

}  // namespace

}  // namespace morvella::cocoa_tests
