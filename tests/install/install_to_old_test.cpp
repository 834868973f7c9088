#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

/// The earlier procedure, which replaces the shared data.
class InstallToOldTest : public InstallerTest {
  protected:
    InstallToOldTest() {
        useUserLibrary();
        addFonts();
        disk.addFolder("/Users/Shared");
        disk.addFolder("/Users/ann/Documents");
    }

    void install() { controller.installToOld(FileUrl::directory("/ignored")); }

    const std::string firstStages =
        keepsFonts() + "\n" + unpacks("morvella.zip", userLibrary) + "\n" + installsUtilities();
    const std::string unpacksShared = createsFolder("/Users/Shared/Morvella") + "\n" +
                                      logs("Installing ISF.zip...") + "\n" +
                                      unpacks("ISF.zip", "/Users/Shared/Morvella");
};

TEST_F(InstallToOldTest, InstallsLikeTheCurrentProcedureOnAFreshMachine) {
    install();
    expectEffects({firstStages, unpacksShared});
}

TEST_F(InstallToOldTest, ReplacesAnExistingSharedFolder) {
    folders.users.error = Error{"odd"};
    disk.addFile("/Users/Shared/Morvella/ISF/old.fs");
    install();
    expectEffects({firstStages, logs("Warning: Couldn't get local domain user folder, error:odd"),
                   deletesFolder("/Users/Shared/Morvella"), unpacksShared});
    EXPECT_FALSE(disk.holds("/Users/Shared/Morvella/ISF/old.fs"));
}

TEST_F(InstallToOldTest, UnpacksOverASharedFolderThatCannotBeTrashed) {
    disk.addFile("/Users/Shared/Morvella/ISF/old.fs");
    refuse("trashed /Users/Shared/Morvella/", "refused");
    install();
    expectEffects({firstStages, deletesFolder("/Users/Shared/Morvella"),
                   failsToTrashFolder("/Users/Shared/Morvella"),
                   logs("Couldn't delete /Users/Shared/Morvella"), unpacksShared});
}

TEST_F(InstallToOldTest, FallsBackToTheDocumentsFolder) {
    refuse("created /Users/Shared/Morvella/", "read-only");
    install();
    EXPECT_TRUE(journal.effects().ends_with(
        lines({createsFolder("/Users/ann/Documents/Morvella"), logs("Installing ISF.zip..."),
               unpacks("ISF.zip", "/Users/ann/Documents/Morvella")})));
}

}  // namespace

}  // namespace morvella::tests
