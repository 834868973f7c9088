#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class PreviousInstallationTest : public InstallerTest {
  protected:
    PreviousInstallationTest() {
        useUserLibrary();
        disk.addFile(installed + "/Presets/mine.adv");
    }

    /// Shows the sheet.
    void ask() {
        controller.doInstallViewAppeared();
        journal.clear();
    }

    void askAndAnswer(ControlState makesBackup) {
        ask();
        window->answer(alertFirstButtonReturn, makesBackup);
    }

    void expectQueuedInstallation() {
        journal.clear();
        runLoop.drainMainQueue();
        EXPECT_TRUE(journal.effects().starts_with(
            lines({"log: starting install after taking care of the old installation.",
                   startsIndicator()})))
            << journal.effects();
        journal.clear();
        runLoop.drainMainQueue();
        expectEverything({});
    }

    const std::string startsBackup =
        "control: new indicator shown\ncontrol: new indicator started by controller";
    const std::string endsBackup =
        "control: new indicator stopped by controller\ncontrol: new indicator hidden";
    const std::string zipFile = userLibrary + "/MorvellaBackup-2009-02-13(233130).zip";
    const std::string packsBackup = packs(installed, zipFile, userLibrary);
    const std::string trashesFolder = trashes(installed + "/");
    const std::string backupFailed =
        "Couldn't make automatic backup of the current installation.\n\n"
        "Please backup and delete Morvella folder from the user library and run the installer "
        "again.";
    static constexpr const char* queues = "queue: work put on the main queue";
};

TEST_F(PreviousInstallationTest, PromptsForItsDeletionInASheet) {
    controller.doInstallViewAppeared();
    expectEverything({
        "asked: reachable /Users/ann/Music/User Library/Morvella/",
        "control: new indicator made at (0, 0), 16 by 16, spinning, indeterminate, hidden",
        "window: made key by nobody",
        "sheet: warning \"Previous installation of Morvella must be deleted.\" [Continue] [Quit], "
        "help, check box \"Make a zip backup of the current Morvella folder.\nBackups are located "
        "in the user library folder.\" on, with new indicator",
    });
    EXPECT_EQ(*controller.destinationURL(), FileUrl::directory(installed));
}

TEST_F(PreviousInstallationTest, MayBeAFile) {
    disk.remove(installed);
    disk.addFile(installed, "a plain file");
    askAndAnswer(ControlState::off);
    EXPECT_FALSE(disk.holds(installed));
}

TEST_F(PreviousInstallationTest, EveryAnswerButContinueQuitsAndChangesNothing) {
    for (const int response : {1001, 1002, 999, 0, -1000, -1001}) {
        ask();
        window->answer(response, ControlState::on);
        expectEverything({quits()});
        runLoop.drainMainQueue();
        expectEverything({});
    }
    EXPECT_TRUE(disk.holds(installed + "/Presets/mine.adv"));
}

TEST_F(PreviousInstallationTest, IsBackedUpThenTrashedThenReplaced) {
    askAndAnswer(ControlState::on);
    expectEverything({
        startsBackup,
        "asked: reachable /Users/ann/Music/User Library/Morvella/",
        "asked: the second 1234567890 as \"yyyy-MM-dd(HHmmss)\"",
        "asked: readable /Users/ann/Music/User Library/Morvella",
        "asked: writable /Users/ann/Music/User Library",
        packsBackup,
        endsBackup,
        trashesFolder,
        "asked: reachable /Users/ann/Music/User Library/Morvella/",
        queues,
    });
    expectQueuedInstallation();
}

TEST_F(PreviousInstallationTest, IsTrashedWithoutABackupUnlessTheCheckBoxIsOn) {
    for (const ControlState state : {ControlState::off, ControlState::mixed}) {
        disk.addFolder(installed);
        askAndAnswer(state);
        expectEffects({trashesFolder, queues});
    }
}

TEST_F(PreviousInstallationTest, IsTrashedEvenIfTheBackupFails) {
    failArchiver(zipFile);
    askAndAnswer(ControlState::on);
    expectEffects({startsBackup, packsBackup,
                   "log: Couldn't make a backup of current installation.",
                   showsCriticalSheet(backupFailed), endsBackup, trashesFolder, queues});
    EXPECT_FALSE(disk.holds(installed));
    expectQueuedInstallation();
}

TEST_F(PreviousInstallationTest, ShowsTwoSheetsAndIsOverwrittenIfItCannotBeTrashed) {
    refuse("trashed /Users/ann/Music/User Library/Morvella/", "refused");
    askAndAnswer(ControlState::off);
    expectEffects({trashesFolder, failsToTrashFolder(installed), "log: couldn't move to trash.",
                   showsCriticalSheet("Couldn't move Morvella folder to trash."),
                   showsCriticalSheet("Old Morvella folder still presists, aborting."), queues});
    EXPECT_EQ(window->sheetsWaiting(), 2U);
    expectQueuedInstallation();
}

TEST_F(PreviousInstallationTest, ShowsOneSheetIfItIsGoneDespiteAFailedMove) {
    disk.outcomes["trashed /Users/ann/Music/User Library/Morvella/"] = {.takesEffect = true};
    askAndAnswer(ControlState::off);
    EXPECT_EQ(journal.only({Kind::sheet}),
              lines({criticalSheet("Couldn't move Morvella folder to trash.")}));
}

TEST_F(PreviousInstallationTest, ShowsOneSheetIfItRemainsDespiteASuccessfulMove) {
    disk.outcomes["trashed /Users/ann/Music/User Library/Morvella/"] = {.result = true};
    askAndAnswer(ControlState::off);
    expectEffects({trashesFolder,
                   showsCriticalSheet("Old Morvella folder still presists, aborting."), queues});
}

TEST_F(PreviousInstallationTest, IsOverwrittenEvenIfEveryStepFails) {
    disk.items[installed].readable = false;
    refuse("trashed /Users/ann/Music/User Library/Morvella/", "refused");
    askAndAnswer(ControlState::on);
    EXPECT_EQ(journal.only({Kind::sheet, Kind::queue}),
              lines({criticalSheet(backupFailed),
                     criticalSheet("Couldn't move Morvella folder to trash."),
                     criticalSheet("Old Morvella folder still presists, aborting."), queues}));
    expectQueuedInstallation();
}

TEST_F(PreviousInstallationTest, SheetRetainsControllerAndIndicatorUntilAnswered) {
    const long before = viewController.object.use_count();
    controller.doInstallViewAppeared();
    ASSERT_EQ(controls.made.size(), 1U);
    EXPECT_FALSE(controls.made[0].expired());
    EXPECT_GT(viewController.object.use_count(), before);
    window->answer(1000);
    EXPECT_TRUE(controls.made[0].expired());
    EXPECT_GT(viewController.object.use_count(), before);
    runLoop.drainMainQueue();
    EXPECT_GT(viewController.object.use_count(), before);  // the failed installation's sheet
    window->answer(1000);
    EXPECT_EQ(viewController.object.use_count(), before);
}

}  // namespace

}  // namespace morvella::tests
