#include <filesystem>

#include "cocoa/real_files_test.hpp"

namespace morvella::cocoa_tests {

namespace {

namespace fs = std::filesystem;

using fakes::Kind;
using fakes::lines;
using Tree = std::vector<std::string>;

/// The install procedure on real files.
class InstallationFilesTest : public RealFilesTest {
  protected:
    InstallationFilesTest() { makePayload(); }

    void install() { installer.installTo(destination); }

    [[nodiscard]] std::string sheets() const { return journal.only({Kind::sheet}); }

    const Tree shaders = {"ISF/", "ISF/Dariwent/", "ISF/Dariwent/a.fs: shader a", "ISF/Standard/",
                          "ISF/Standard/b.fs: shader b"};
    const Tree utility = {"Tressimo.app/", "Tressimo.app/Contents/",
                          "Tressimo.app/Contents/Info.plist: the utility"};
};

TEST_F(InstallationFilesTest, PutsEveryPieceInItsPlace) {
    install();
    EXPECT_EQ(folder.tree("home/Library/Fonts"),
              (Tree{"Archivo-Medium.ttf: Archivo-Medium.ttf",
                    "OpenSans-Regular.ttf: OpenSans-Regular.ttf"}));
    EXPECT_EQ(folder.tree("home/Music/User Library"),
              (Tree{"Morvella/", "Morvella/Morvella.app/", "Morvella/Morvella.app/Contents/",
                    "Morvella/Morvella.app/Contents/Info.plist: the application",
                    "Morvella/Sources/", "Morvella/Sources/Vellicor.amxd: the device"}));
    EXPECT_EQ(folder.tree("Applications/Morvella"), utility);
    EXPECT_EQ(folder.tree("Users/Shared/Morvella"), shaders);
    EXPECT_EQ(folder.tree("home/Documents"), Tree());
    EXPECT_EQ(sheets(), "");
}

TEST_F(InstallationFilesTest, HidesTheApplicationAndVerifies) {
    EXPECT_FALSE(installer.checkInstall(destination));
    install();
    EXPECT_FALSE(installer.checkInstall(destination));
    EXPECT_TRUE(installer.hideApp(destination));
    EXPECT_EQ(folder.contents("home/Music/User Library/Morvella/.Morvella.app/Contents/Info.plist"),
              "the application");
    EXPECT_FALSE(folder.holds("home/Music/User Library/Morvella/Morvella.app"));
    EXPECT_TRUE(installer.checkInstall(destination));
    fs::remove(folder.at("home/Music/User Library/Morvella/Sources/Vellicor.amxd"));
    EXPECT_FALSE(installer.checkInstall(destination));
}

TEST_F(InstallationFilesTest, ASecondOneReplacesTheUtilityAndLeavesTheSharedDataAlone) {
    install();
    folder.addFile("Users/Shared/Morvella/ISF/Standard/b.fs", "changed by the user");
    folder.addFile("Applications/Morvella/old", "old");
    install();
    EXPECT_EQ(folder.tree("Applications/Morvella"), utility);
    EXPECT_EQ(folder.contents("Users/Shared/Morvella/ISF/Standard/b.fs"), "changed by the user");
    EXPECT_EQ(sheets(), "");
}

TEST_F(InstallationFilesTest, FallsBackToTheDocumentsWhenTheSharedFolderCannotBeMade) {
    changes.failing = {"create " + folder.at("Users/Shared/Morvella")};
    folder.addFile("home/Documents/Morvella/ISF/Dariwent/old.fs", "old");
    folder.addFile("home/Documents/Morvella/ISF/Mine/my.fs", "mine");
    folder.addFile("home/Documents/ISF/Standard/my.fs", "mine");
    install();
    EXPECT_FALSE(folder.holds("Users/Shared/Morvella"));
    EXPECT_FALSE(folder.holds("home/Documents/Morvella/ISF/Dariwent/old.fs"));
    EXPECT_EQ(folder.contents("home/Documents/Morvella/ISF/Mine/my.fs"), "mine");
    EXPECT_EQ(folder.contents("home/Documents/ISF/Standard/my.fs"), "mine");
    EXPECT_EQ(folder.contents("home/Documents/Morvella/ISF/Standard/b.fs"), "shader b");
    EXPECT_NE(logged().find("log: Couldn't create shared folder(file://STAGE/Users/Shared/"
                            "Morvella/), error:made to fail\n"),
              std::string::npos)
        << logged();
}

/// Before the product folder exists nothing tells that "Morvella" will be a folder: what is
/// resolved against it must land in it all the same.
TEST_F(InstallationFilesTest, LeavesTheUsersOwnFoldersBesideTheProductAlone) {
    changes.failing = {"create " + folder.at("Users/Shared/Morvella")};
    folder.addFile("home/Documents/ISF/Dariwent/my.fs", "mine");
    folder.addFile("home/Documents/Dariwent/my.fs", "mine");
    folder.addFile("Users/Morvella/my.fs", "mine");
    install();
    EXPECT_EQ(folder.contents("home/Documents/ISF/Dariwent/my.fs"), "mine");
    EXPECT_EQ(folder.contents("home/Documents/Dariwent/my.fs"), "mine");
    EXPECT_EQ(folder.contents("Users/Morvella/my.fs"), "mine");
    EXPECT_EQ(folder.tree("home/Documents/Morvella"), shaders);
}

TEST_F(InstallationFilesTest, FallsBackToTheDocumentsWhenTheSharedFolderIsNotWritable) {
    fs::permissions(folder.at("Users/Shared"), fs::perms(0555));
    fs::permissions(folder.at("home"), fs::perms::all);
    for (const char* path :
         {"home/Documents", "home/Library/Fonts", "home/Music/User Library", "Applications"}) {
        fs::permissions(folder.at(path), fs::perms::all);
    }
    {
        const OrdinaryUser user;
        install();
    }
    EXPECT_FALSE(folder.holds("Users/Shared/Morvella"));
    EXPECT_EQ(folder.tree("home/Documents/Morvella"), shaders);
    EXPECT_NE(logged().find("log: Shared folder not found, falling back to user folder.\n"),
              std::string::npos);
    EXPECT_EQ(sheets(), "");
}

TEST_F(InstallationFilesTest, ShowsASheetWhenNeitherSharedNorDocumentsAreThere) {
    changes.failing = {"create " + folder.at("Users/Shared/Morvella"),
                       "create " + folder.at("home/Documents/Morvella")};
    fs::remove(folder.at("home/Documents"));
    install();
    EXPECT_EQ(sheets(),
              lines({"sheet: critical \"Could not access shared user data, aborting.\" [Quit]"}));
}

TEST_F(InstallationFilesTest, ShowsASheetWhenThereIsNoDocumentsFolderAtAll) {
    changes.failing = {"create " + folder.at("Users/Shared/Morvella")};
    folders.documents = {.url = std::nullopt, .error = Error{"none"}};
    const fs::path before = fs::current_path();
    fs::current_path(folder.at("Bundle"));
    install();
    fs::current_path(before);
    EXPECT_EQ(sheets(),
              lines({"sheet: critical \"Could not access shared user data, aborting.\" [Quit]"}));
}

TEST_F(InstallationFilesTest, ShowsASheetWhenTheApplicationsFolderIsClosed) {
    changes.failing = {"create " + folder.at("Applications/Morvella")};
    install();
    EXPECT_TRUE(sheets().starts_with(
        "sheet: critical \"Could not access /Applications folder, aborting.\" [Quit]\n"))
        << sheets();
    EXPECT_EQ(folder.tree("Users/Shared/Morvella"), shaders);
}

TEST_F(InstallationFilesTest, KeepsAFontOfTheUsersOwn) {
    folder.addFile("home/Library/Fonts/Archivo-Medium.ttf", "the user's version");
    EXPECT_TRUE(installer.installFontList({"Archivo-Medium.ttf", "OpenSans-Regular.ttf"}));
    EXPECT_EQ(folder.contents("home/Library/Fonts/Archivo-Medium.ttf"), "the user's version");
    EXPECT_EQ(folder.contents("home/Library/Fonts/OpenSans-Regular.ttf"), "OpenSans-Regular.ttf");
}

TEST_F(InstallationFilesTest, MakesNoFontFolder) {
    fs::remove(folder.at("home/Library/Fonts"));
    EXPECT_FALSE(installer.installFontList({"Archivo-Medium.ttf", "OpenSans-Regular.ttf"}));
    EXPECT_FALSE(folder.holds("home/Library/Fonts"));
    EXPECT_NE(logged().find("log: Copy error:"), std::string::npos);
    EXPECT_NE(logged().find("log: Can't find font in the users' fonts library:"),
              std::string::npos);
}

TEST_F(InstallationFilesTest, AFontThatCannotBeCopiedDoesNotStopTheOther) {
    changes.failing = {"copy " + folder.at("Bundle/Archivo-Medium.ttf")};
    EXPECT_FALSE(installer.installFontList({"Archivo-Medium.ttf", "OpenSans-Regular.ttf"}));
    EXPECT_EQ(folder.tree("home/Library/Fonts"),
              Tree{"OpenSans-Regular.ttf: OpenSans-Regular.ttf"});
}

TEST_F(InstallationFilesTest, AnApplicationThatCannotBeRenamedStaysVisible) {
    install();
    changes.failing = {"move " + destination.path() + "/Morvella.app"};
    EXPECT_FALSE(installer.hideApp(destination));
    EXPECT_TRUE(folder.holds("home/Music/User Library/Morvella/Morvella.app"));
    EXPECT_TRUE(logged().ends_with("log: Couldn't hide the app file, error:made to fail\n"));
}

TEST_F(InstallationFilesTest, AnOlderHiddenApplicationIsReplaced) {
    install();
    folder.addFile("home/Music/User Library/Morvella/.Morvella.app/old", "old");
    EXPECT_TRUE(installer.hideApp(destination));
    EXPECT_EQ(folder.tree("home/Music/User Library/Morvella/.Morvella.app"),
              (Tree{"Contents/", "Contents/Info.plist: the application"}));
}

TEST_F(InstallationFilesTest, AnOlderHiddenApplicationThatStaysEndsHiding) {
    install();
    folder.addFile("home/Music/User Library/Morvella/.Morvella.app/old", "old");
    changes.failing = {"trash " + destination.path() + "/.Morvella.app"};
    EXPECT_FALSE(installer.hideApp(destination));
    EXPECT_TRUE(folder.holds("home/Music/User Library/Morvella/Morvella.app/Contents"));
    EXPECT_EQ(folder.contents("home/Music/User Library/Morvella/.Morvella.app/old"), "old");
}

}  // namespace

}  // namespace morvella::cocoa_tests
