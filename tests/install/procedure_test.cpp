#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

/// The first three stages: fonts, suite and utility application. The shared product folder exists,
/// so the last stage has nothing to do.
class ProcedureTest : public InstallerTest {
  protected:
    ProcedureTest() {
        useUserLibrary();
        addFonts();
        disk.addFolder("/Users/Shared/Morvella");
    }

    void install() { controller.installTo(FileUrl::directory("/ignored")); }

    const std::string fontsAndSuite = keepsFonts() + "\n" + unpacks("morvella.zip", userLibrary);
    static constexpr const char* created = "created /Applications/Morvella/";
};

TEST_F(ProcedureTest, InstallsFontsThenSuiteThenUtilities) {
    install();
    expectEffects({fontsAndSuite, installsUtilities()});
}

TEST_F(ProcedureTest, DependsOnTheUserLibraryAndNotOnTheDestination) {
    controller.setDestinationURL(folderUrl("/other"));
    controller.setUserLibPath(text("/Volumes/Audio/Lib"));
    install();
    EXPECT_EQ(journal.only({Kind::command}),
              lines({unpacks("morvella.zip", "/Volumes/Audio/Lib"),
                     unpacks("Tressimo.zip", "/Applications/Morvella")}));
}

TEST_F(ProcedureTest, AFailureToInstallTheFontsIsOnlyLogged) {
    disk.remove("/Users/ann/Library/Fonts");
    bundles.main->resources = {{"morvella.zip", "/Bundle/morvella.zip"},
                               {"Tressimo.zip", "/Bundle/Tressimo.zip"}};
    install();
    EXPECT_TRUE(journal.effects().ends_with(
        lines({"log: Couldn't install fonts.", unpacks("morvella.zip", userLibrary),
               installsUtilities()})));
}

TEST_F(ProcedureTest, AFailureToUnpackTheSuiteIsIgnored) {
    failArchiver("/Bundle/morvella.zip");
    install();
    expectEffects({fontsAndSuite, installsUtilities()});
}

TEST_F(ProcedureTest, ASuiteMissingFromTheBundleIsIgnored) {
    bundles.main->resources.erase("morvella.zip");
    install();
    expectEffects({keepsFonts(), installsUtilities()});
}

TEST_F(ProcedureTest, AnOldUtilityFolderGoesToTheTrash) {
    disk.addFile("/Applications/Morvella/Tressimo.app/old");
    install();
    expectEffects({fontsAndSuite, "log: Deleting /Applications/Morvella",
                   "file: trashed /Applications/Morvella/", installsUtilities()});
    EXPECT_FALSE(disk.holds("/Applications/Morvella/Tressimo.app/old"));
    EXPECT_TRUE(disk.holds("/Applications/Morvella"));
}

TEST_F(ProcedureTest, AFailureToTrashTheOldUtilityFolderIsOnlyLogged) {
    disk.addFolder("/Applications/Morvella");
    refuse("trashed /Applications/Morvella/", "refused");
    install();
    expectEffects({fontsAndSuite, deletesFolder("/Applications/Morvella"),
                   failsToTrashFolder("/Applications/Morvella"),
                   "log: Couldn't delete /Applications/Morvella", installsUtilities()});
}

TEST_F(ProcedureTest, UnpacksTheUtilitiesEvenIfTheirFolderCannotBeCreated) {
    refuse(created, "not permitted");
    install();
    expectEffects({
        fontsAndSuite,
        "file: created /Applications/Morvella/",
        "log: Creating Morvella folder in /Applications failed with error: not permitted",
        showsCriticalSheet("Could not access /Applications folder, aborting."),
        "log: Installing Tressimo.zip to /Applications/Morvella...",
        unpacks("Tressimo.zip", "/Applications/Morvella"),
    });
}

/// The result, not the error object, decides whether creating the folder failed.
TEST_F(ProcedureTest, AnErrorIsIgnoredIfTheUtilityFolderIsCreated) {
    disk.outcomes[created] = {.result = true, .error = Error{"odd"}, .takesEffect = true};
    install();
    expectEffects({fontsAndSuite, installsUtilities()});
}

TEST_F(ProcedureTest, AUtilityFolderThatFailsWithoutAnErrorLogsNull) {
    disk.outcomes[created] = {};
    install();
    EXPECT_NE(journal.only({Kind::log}).find("failed with error: (null)\n"), std::string::npos);
    EXPECT_EQ(journal.only({Kind::sheet}),
              lines({criticalSheet("Could not access /Applications folder, aborting.")}));
}

TEST_F(ProcedureTest, UtilitiesThatCannotBeUnpackedShowASheet) {
    failArchiver("/Bundle/Tressimo.zip");
    install();
    expectEffects({fontsAndSuite, installsUtilities(),
                   "log: Decompressing resource failed: Tressimo.zip",
                   showsCriticalSheet("Could not install utilities, aborting.")});
}

TEST_F(ProcedureTest, ContinuesWithTheSharedDataAfterEveryFailure) {
    disk.remove("/Users/Shared/Morvella");
    refuse(created, "not permitted");
    bundles.main->resources.erase("Tressimo.zip");
    failArchiver("/Bundle/morvella.zip");
    failArchiver("/Bundle/ISF.zip");
    install();
    EXPECT_EQ(journal.only({Kind::sheet}),
              lines({criticalSheet("Could not access /Applications folder, aborting."),
                     criticalSheet("Could not install utilities, aborting."),
                     criticalSheet("Could not install user files, aborting.")}));
}

}  // namespace

}  // namespace morvella::tests
