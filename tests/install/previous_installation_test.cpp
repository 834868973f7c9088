#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class PreviousInstallationTest : public InstallerTest {
  protected:
    PreviousInstallationTest() {
        useUserLibrary();
        disk.addFile(installed + "/Presets/mine.adv");
    }

    /// Up to where the sheet waits for its answer.
    void ask() {
        controller.doInstallViewAppeared();
        journal.clear();
    }

    static constexpr const char* trashed = "trashed /Users/ann/Music/User Library/Morvella/";
    static constexpr const char* backupStarted =
        "control: new indicator shown\n"
        "control: new indicator started by controller\n";
    static constexpr const char* packed =
        "run: /usr/bin/ditto | -c | -k | --sequesterRsrc | --keepParent | "
        "/Users/ann/Music/User Library/Morvella | "
        "/Users/ann/Music/User Library/MorvellaBackup-2009-02-13(233130).zip in "
        "/Users/ann/Music/User Library\n";
    static constexpr const char* backupEnded =
        "control: new indicator stopped by controller\n"
        "control: new indicator hidden\n";
    static constexpr const char* trashedAndQueued =
        "file: trashed /Users/ann/Music/User Library/Morvella/\n"
        "queue: work put on the main queue\n";
};

TEST_F(PreviousInstallationTest, IsOfferedForDeletionInASheet) {
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
    controller.doInstallViewAppeared();
    EXPECT_EQ(window->sheetsWaiting(), 1U);
    window->answer(1000);
    EXPECT_FALSE(disk.holds(installed));
}

TEST_F(PreviousInstallationTest, AnythingButContinueQuitsAndTouchesNothing) {
    for (const int response : {1001, 1002, 999, 0, -1000, -1001}) {
        ask();
        window->answer(response, ControlState::on);
        expectEverything({"application: terminated by controller"});
        runLoop.drainMainQueue();
        expectEverything({});
    }
    EXPECT_TRUE(disk.holds(installed + "/Presets/mine.adv"));
}

TEST_F(PreviousInstallationTest, IsBackedUpAndMovedToTheTrash) {
    ask();
    window->answer(1000, ControlState::on);
    expectEverything({
        "control: new indicator shown",
        "control: new indicator started by controller",
        "asked: reachable /Users/ann/Music/User Library/Morvella/",
        "asked: the second 1234567890 as \"yyyy-MM-dd(HHmmss)\"",
        "asked: readable /Users/ann/Music/User Library/Morvella",
        "asked: writable /Users/ann/Music/User Library",
        "run: /usr/bin/ditto | -c | -k | --sequesterRsrc | --keepParent | "
        "/Users/ann/Music/User Library/Morvella | "
        "/Users/ann/Music/User Library/MorvellaBackup-2009-02-13(233130).zip in "
        "/Users/ann/Music/User Library",
        "control: new indicator stopped by controller",
        "control: new indicator hidden",
        "file: trashed /Users/ann/Music/User Library/Morvella/",
        "asked: reachable /Users/ann/Music/User Library/Morvella/",
        "queue: work put on the main queue",
    });
}

TEST_F(PreviousInstallationTest, IsOnlyMovedToTheTrashWithTheCheckBoxCleared) {
    for (const ControlState state : {ControlState::off, ControlState::mixed}) {
        disk.addFolder(installed);
        ask();
        window->answer(1000, state);
        expectEverything({
            "file: trashed /Users/ann/Music/User Library/Morvella/",
            "asked: reachable /Users/ann/Music/User Library/Morvella/",
            "queue: work put on the main queue",
        });
    }
}

TEST_F(PreviousInstallationTest, InstallationStartsOnALaterTurnOfTheMainQueue) {
    ask();
    window->answer(1000);
    journal.clear();
    runLoop.drainMainQueue();
    EXPECT_TRUE(journal.effects().starts_with(
        "log: starting install after taking care of the old installation.\n"
        "control: installation indicator started by settings indicator\n"))
        << journal.effects();
    journal.clear();
    runLoop.drainMainQueue();
    expectEverything({});
}

TEST_F(PreviousInstallationTest, IsTrashedAlsoWhenTheBackupFails) {
    tasks.results["/Users/ann/Music/User Library/MorvellaBackup-2009-02-13(233130).zip"] =
        TaskResult{.terminationStatus = 1, .output = "no space"};
    ask();
    window->answer(1000, ControlState::on);
    expectEffects(std::string(backupStarted) + packed +
                  lines({"log: Couldn't make a backup of current installation."}) +
                  terminationSheet(
                      "Couldn't make automatic backup of the current installation.\n\n"
                      "Please backup and delete Morvella folder from the user library and run the "
                      "installer again.") +
                  backupEnded + trashedAndQueued);
    EXPECT_FALSE(disk.holds(installed));
    runLoop.drainMainQueue();
    EXPECT_NE(journal.only({Kind::command}), "");
}

TEST_F(PreviousInstallationTest, ABackupThatIsNotAllowedFails) {
    disk.items[userLibrary].writable = false;
    ask();
    window->answer(1000, ControlState::on);
    expectEffects(backupStarted +
                  lines({"log: Making backup failed",
                         "log: Couldn't make a backup of current installation."}) +
                  terminationSheet(
                      "Couldn't make automatic backup of the current installation.\n\n"
                      "Please backup and delete Morvella folder from the user library and run the "
                      "installer again.") +
                  backupEnded + trashedAndQueued);
}

TEST_F(PreviousInstallationTest, ThatStaysAsksForTwoSheetsAndIsInstalledOver) {
    disk.outcomes[trashed] = {.error = Error{"refused"}};
    ask();
    window->answer(1000);
    expectEffects(lines({"file: trashed /Users/ann/Music/User Library/Morvella/",
                         "log: failed to move to "
                         "trash:file:///Users/ann/Music/User%20Library/Morvella/",
                         "log: couldn't move to trash."}) +
                  terminationSheet("Couldn't move Morvella folder to trash.") +
                  terminationSheet("Old Morvella folder still presists, aborting.") +
                  lines({"queue: work put on the main queue"}));
    EXPECT_EQ(window->sheetsWaiting(), 2U);
    runLoop.drainMainQueue();
    EXPECT_TRUE(journal.effects().starts_with(
        "log: starting install after taking care of the old installation.\n"));
}

TEST_F(PreviousInstallationTest, ThatIsGoneThoughItsMoveFailedAsksForOneSheet) {
    disk.outcomes[trashed] = {.result = false, .error = Error{"odd"}, .takesEffect = true};
    ask();
    window->answer(1000);
    EXPECT_EQ(journal.only({Kind::sheet}),
              lines({"sheet: critical \"Couldn't move Morvella folder to trash.\" [Quit]"}));
}

TEST_F(PreviousInstallationTest, ThatIsStillThereThoughItWasMovedAsksForOneSheet) {
    disk.outcomes[trashed] = {.result = true};
    ask();
    window->answer(1000);
    expectEffects(lines({"file: trashed /Users/ann/Music/User Library/Morvella/"}) +
                  terminationSheet("Old Morvella folder still presists, aborting.") +
                  lines({"queue: work put on the main queue"}));
}

TEST_F(PreviousInstallationTest, EveryFailureTogetherStillInstalls) {
    disk.items[installed].readable = false;
    disk.outcomes[trashed] = {.error = Error{"refused"}};
    ask();
    window->answer(1000, ControlState::on);
    EXPECT_EQ(
        journal.only({Kind::sheet, Kind::queue}),
        lines({"sheet: critical \"Couldn't make automatic backup of the current installation.\n\n"
               "Please backup and delete Morvella folder from the user library and run the "
               "installer again.\" [Quit]",
               "sheet: critical \"Couldn't move Morvella folder to trash.\" [Quit]",
               "sheet: critical \"Old Morvella folder still presists, aborting.\" [Quit]",
               "queue: work put on the main queue"}));
    journal.clear();
    runLoop.drainMainQueue();
    EXPECT_TRUE(journal.effects().starts_with(
        "log: starting install after taking care of the old installation.\n"));
}

TEST_F(PreviousInstallationTest, SheetHoldsControllerAndIndicatorUntilAnswered) {
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
