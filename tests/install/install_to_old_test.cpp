#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

/// The earlier procedure, which replaces the shared data.
class InstallToOldTest : public InstallerTest {
  protected:
    InstallToOldTest() {
        useUserLibrary();
        disk.addFolder("/Users/Shared");
        disk.addFolder("/Users/ann/Documents");
        disk.addFile("/Users/ann/Library/Fonts/Archivo-Medium.ttf");
        disk.addFile("/Users/ann/Library/Fonts/OpenSans-Regular.ttf");
    }

    static constexpr const char* firstStages =
        "log: Font already installed:Archivo-Medium.ttf\n"
        "log: Font already installed:OpenSans-Regular.ttf\n"
        "run: /usr/bin/ditto | -v | -x | -k | /Bundle/morvella.zip | "
        "/Users/ann/Music/User Library\n"
        "file: created /Applications/Morvella/\n"
        "log: Installing Tressimo.zip to /Applications/Morvella...\n"
        "run: /usr/bin/ditto | -v | -x | -k | /Bundle/Tressimo.zip | /Applications/Morvella\n";
    static constexpr const char* shared =
        "file: created /Users/Shared/Morvella/\n"
        "log: Installing ISF.zip...\n"
        "run: /usr/bin/ditto | -v | -x | -k | /Bundle/ISF.zip | /Users/Shared/Morvella\n";
};

TEST_F(InstallToOldTest, InstallsLikeTheOtherOnAFreshMachine) {
    controller.installToOld(FileUrl::directory("/ignored"));
    expectEffects(std::string(firstStages) + shared);
}

TEST_F(InstallToOldTest, ReplacesAnExistingSharedFolder) {
    disk.addFile("/Users/Shared/Morvella/ISF/old.fs");
    controller.installToOld(FileUrl::directory("/ignored"));
    expectEffects(
        firstStages +
        lines({"log: Deleting /Users/Shared/Morvella", "file: trashed /Users/Shared/Morvella/"}) +
        shared);
    EXPECT_FALSE(disk.holds("/Users/Shared/Morvella/ISF/old.fs"));
}

TEST_F(InstallToOldTest, UnpacksIntoAFolderThatStays) {
    disk.addFile("/Users/Shared/Morvella/ISF/old.fs");
    disk.outcomes["trashed /Users/Shared/Morvella/"] = {.error = Error{"refused"}};
    controller.installToOld(FileUrl::directory("/ignored"));
    expectEffects(
        firstStages +
        lines({"log: Deleting /Users/Shared/Morvella", "file: trashed /Users/Shared/Morvella/",
               "log: failed to move to trash:file:///Users/Shared/Morvella/",
               "log: Couldn't delete /Users/Shared/Morvella"}) +
        shared);
}

TEST_F(InstallToOldTest, FallsBackToTheDocuments) {
    disk.outcomes["created /Users/Shared/Morvella/"] = {.error = Error{"read-only"}};
    controller.installToOld(FileUrl::directory("/ignored"));
    expectEffects(
        firstStages +
        lines({"file: created /Users/Shared/Morvella/",
               "log: Couldn't create shared folder(file:///Users/Shared/Morvella/), "
               "error:read-only",
               "log: Shared folder not found, falling back to user folder.",
               "log: Couldn't access documents folder, error:read-only",
               "file: created /Users/ann/Documents/Morvella/", "log: Installing ISF.zip...",
               "run: /usr/bin/ditto | -v | -x | -k | /Bundle/ISF.zip | "
               "/Users/ann/Documents/Morvella"}));
}

TEST_F(InstallToOldTest, WarnsOfTheUsersFolderBeforeItDeletes) {
    folders.users.error = Error{"odd"};
    disk.addFolder("/Users/Shared/Morvella");
    controller.installToOld(FileUrl::directory("/ignored"));
    expectEffects(
        firstStages +
        lines({"log: Warning: Couldn't get local domain user folder, error:odd",
               "log: Deleting /Users/Shared/Morvella", "file: trashed /Users/Shared/Morvella/"}) +
        shared);
}

}  // namespace

}  // namespace morvella::tests
