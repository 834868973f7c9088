#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

/// The first three stages: fonts, suite and utility application. The shared product folder is
/// there, so that the last one has nothing to do.
class ProcedureTest : public InstallerTest {
  protected:
    ProcedureTest() {
        useUserLibrary();
        disk.addFolder("/Users/Shared/Morvella");
        disk.addFile("/Users/ann/Library/Fonts/Archivo-Medium.ttf");
        disk.addFile("/Users/ann/Library/Fonts/OpenSans-Regular.ttf");
    }

    void install() { controller.installTo(FileUrl::directory("/ignored")); }

    static constexpr const char* fontsPresent =
        "log: Font already installed:Archivo-Medium.ttf\n"
        "log: Font already installed:OpenSans-Regular.ttf\n";
    static constexpr const char* suiteUnpacked =
        "run: /usr/bin/ditto | -v | -x | -k | /Bundle/morvella.zip | "
        "/Users/ann/Music/User Library\n";
    static constexpr const char* utilityUnpacked =
        "file: created /Applications/Morvella/\n"
        "log: Installing Tressimo.zip to /Applications/Morvella...\n"
        "run: /usr/bin/ditto | -v | -x | -k | /Bundle/Tressimo.zip | /Applications/Morvella\n";
};

TEST_F(ProcedureTest, InstallsFontsThenSuiteThenUtilities) {
    install();
    expectEffects(std::string(fontsPresent) + suiteUnpacked + utilityUnpacked);
}

TEST_F(ProcedureTest, DependsOnTheUserLibraryAndNotOnTheDestination) {
    controller.setDestinationURL(std::make_shared<const FileUrl>(FileUrl::directory("/other")));
    controller.setUserLibPath(text("/Volumes/Audio/Lib"));
    controller.installTo(FileUrl::file("/nonsense"));
    EXPECT_EQ(journal.only({Kind::command}),
              lines({"run: /usr/bin/ditto | -v | -x | -k | /Bundle/morvella.zip | "
                     "/Volumes/Audio/Lib",
                     "run: /usr/bin/ditto | -v | -x | -k | /Bundle/Tressimo.zip | "
                     "/Applications/Morvella"}));
}

TEST_F(ProcedureTest, AFailureOfTheFontsIsOnlyLogged) {
    disk.remove("/Users/ann/Library/Fonts");
    bundles.main->resources.erase("Archivo-Medium.ttf");
    bundles.main->resources.erase("OpenSans-Regular.ttf");
    install();
    expectEffects(lines({
                      "log: Can't find font in the users' fonts library:nothing at "
                      "/Users/ann/Library/Fonts/Archivo-Medium.ttf",
                      "log: Can't find font in the users' fonts library:nothing at "
                      "/Users/ann/Library/Fonts/OpenSans-Regular.ttf",
                      "log: Couldn't install fonts.",
                  }) +
                  suiteUnpacked + utilityUnpacked);
}

TEST_F(ProcedureTest, AFailureOfTheSuiteIsIgnored) {
    tasks.results["/Bundle/morvella.zip"] = TaskResult{.terminationStatus = 1};
    install();
    expectEffects(std::string(fontsPresent) + suiteUnpacked + utilityUnpacked);
}

TEST_F(ProcedureTest, ASuiteThatTheBundleLacksIsIgnored) {
    bundles.main->resources.erase("morvella.zip");
    install();
    expectEffects(std::string(fontsPresent) + utilityUnpacked);
}

TEST_F(ProcedureTest, AnOldUtilityFolderGoesToTheTrash) {
    disk.addFile("/Applications/Morvella/Tressimo.app/old");
    install();
    expectEffects(
        std::string(fontsPresent) + suiteUnpacked +
        lines({"log: Deleting /Applications/Morvella", "file: trashed /Applications/Morvella/"}) +
        utilityUnpacked);
    EXPECT_FALSE(disk.holds("/Applications/Morvella/Tressimo.app/old"));
    EXPECT_TRUE(disk.holds("/Applications/Morvella"));
}

TEST_F(ProcedureTest, AnOldUtilityFolderThatStaysIsOnlyLogged) {
    disk.addFolder("/Applications/Morvella");
    disk.outcomes["trashed /Applications/Morvella/"] = {.error = Error{"refused"}};
    install();
    expectEffects(
        std::string(fontsPresent) + suiteUnpacked +
        lines({"log: Deleting /Applications/Morvella", "file: trashed /Applications/Morvella/",
               "log: failed to move to trash:file:///Applications/Morvella/",
               "log: Couldn't delete /Applications/Morvella"}) +
        utilityUnpacked);
}

TEST_F(ProcedureTest, AUtilityFolderThatCannotBeMadeShowsASheetAndIsUnpackedIntoAllTheSame) {
    disk.outcomes["created /Applications/Morvella/"] = {.error = Error{"not permitted"}};
    install();
    expectEffects(std::string(fontsPresent) + suiteUnpacked +
                  lines({"file: created /Applications/Morvella/",
                         "log: Creating Morvella folder in /Applications failed with error: not "
                         "permitted"}) +
                  terminationSheet("Could not access /Applications folder, aborting.") +
                  lines({"log: Installing Tressimo.zip to /Applications/Morvella...",
                         "run: /usr/bin/ditto | -v | -x | -k | /Bundle/Tressimo.zip | "
                         "/Applications/Morvella"}));
}

/// The result decides whether it failed, and not the error object.
TEST_F(ProcedureTest, AUtilityFolderThatIsMadeWithAnErrorIsMade) {
    disk.outcomes["created /Applications/Morvella/"] = {
        .result = true, .error = Error{"odd"}, .takesEffect = true};
    install();
    expectEffects(std::string(fontsPresent) + suiteUnpacked + utilityUnpacked);
}

TEST_F(ProcedureTest, AUtilityFolderThatCannotBeMadeWithoutErrorSaysNull) {
    disk.outcomes["created /Applications/Morvella/"] = {};
    install();
    EXPECT_NE(journal.only({Kind::log}).find("failed with error: (null)\n"), std::string::npos);
    EXPECT_EQ(
        journal.only({Kind::sheet}),
        lines({"sheet: critical \"Could not access /Applications folder, aborting.\" [Quit]"}));
}

TEST_F(ProcedureTest, TheErrorOfTheUtilityFolderIsNotThatOfTheSharedData) {
    disk.remove("/Users/Shared");
    disk.outcomes["created /Applications/Morvella/"] = {.error = Error{"not permitted"}};
    install();
    EXPECT_EQ(journal.only({Kind::log}).find("Warning"), std::string::npos);
}

TEST_F(ProcedureTest, UtilitiesThatCannotBeUnpackedShowASheet) {
    tasks.results["/Bundle/Tressimo.zip"] = TaskResult{.terminationStatus = 1};
    install();
    expectEffects(std::string(fontsPresent) + suiteUnpacked + utilityUnpacked +
                  lines({"log: Decompressing resource failed: Tressimo.zip"}) +
                  terminationSheet("Could not install utilities, aborting."));
}

TEST_F(ProcedureTest, UtilitiesThatTheBundleLacksShowASheet) {
    bundles.main->resources.erase("Tressimo.zip");
    install();
    expectEffects(std::string(fontsPresent) + suiteUnpacked +
                  lines({"file: created /Applications/Morvella/",
                         "log: Installing Tressimo.zip to /Applications/Morvella...",
                         "log: Decompressing resource failed: Tressimo.zip"}) +
                  terminationSheet("Could not install utilities, aborting."));
}

TEST_F(ProcedureTest, GoesOnToTheSharedDataAfterEveryFailure) {
    disk.remove("/Users/Shared/Morvella");
    disk.outcomes["created /Applications/Morvella/"] = {.error = Error{"not permitted"}};
    tasks.results["/Bundle/morvella.zip"] = TaskResult{.terminationStatus = 1};
    tasks.results["/Bundle/Tressimo.zip"] = std::nullopt;
    tasks.results["/Bundle/ISF.zip"] = TaskResult{.terminationStatus = 9};
    install();
    EXPECT_EQ(journal.only({Kind::sheet}),
              lines({"sheet: critical \"Could not access /Applications folder, aborting.\" [Quit]",
                     "sheet: critical \"Could not install utilities, aborting.\" [Quit]",
                     "sheet: critical \"Could not install user files, aborting.\" [Quit]"}));
}

}  // namespace

}  // namespace morvella::tests
