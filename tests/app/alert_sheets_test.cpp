#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class AlertSheetsTest : public InstallerTest {};

TEST_F(AlertSheetsTest, TerminationBringsTheWindowToTheFrontLogsAndShowsItsSheet) {
    controller.terminateAppWithAlertSheet("Couldn't get user library path.");
    expectEverything({
        "window: made key by controller",
        "log: critical error:Couldn't get user library path.",
        "sheet: critical \"Couldn't get user library path.\" [Quit]",
    });
}

TEST_F(AlertSheetsTest, TerminationQuitsOnlyWhenAnsweredWhateverTheAnswer) {
    for (const int response : {1000, 1001, 0, -1000}) {
        controller.terminateAppWithAlertSheet("Install failed");
        EXPECT_EQ(journal.only({Kind::application}), "");
        journal.clear();
        window->answer(response);
        expectEverything({quits()});
    }
}

TEST_F(AlertSheetsTest, EachSheetRetainsTheControllerUntilAnswered) {
    const long before = viewController.object.use_count();
    controller.terminateAppWithAlertSheet("Install failed");
    EXPECT_GT(viewController.object.use_count(), before);
    window->answer(1000);
    EXPECT_EQ(viewController.object.use_count(), before);
    controller.alertSheet();
    EXPECT_GT(viewController.object.use_count(), before);
    window->answer(1000);
    EXPECT_EQ(viewController.object.use_count(), before);
}

TEST_F(AlertSheetsTest, TerminationCanBeRequestedAgainWhileASheetIsUp) {
    controller.terminateAppWithAlertSheet("one");
    controller.terminateAppWithAlertSheet("100 %@ of %u");
    expectEffects({showsCriticalSheet("one"), showsCriticalSheet("100 %@ of %u")});
    EXPECT_EQ(window->sheetsWaiting(), 2U);
}

TEST_F(AlertSheetsTest, UnknownStateLogsTwiceAndShowsASheetWithTwoLines) {
    controller.unknownStateReached();
    expectEverything({
        "log: unknown state reached.",
        "window: made key by controller",
        "log: critical error:The installer reached an unkown state, please try restarting the "
        "installer.\nIf the problem persists, please contact support.",
        "sheet: critical \"The installer reached an unkown state, please try restarting the "
        "installer.\nIf the problem persists, please contact support.\" [Quit]",
    });
}

TEST_F(AlertSheetsTest, ExistingInstallationSheetHasThreeButtonsAndLogsNothing) {
    controller.alertSheet();
    expectEverything({
        "window: made key by controller",
        "sheet: warning \"There is a version of Morvella already installed.\" [Replace] "
        "[Overwrite] [Quit]",
    });
}

TEST_F(AlertSheetsTest, ExistingInstallationSheetQuitsUnlessAnsweredReplaceOrOverwrite) {
    for (const int response : {1000, 1001, 1002, 1003, 999, 0, -1001}) {
        controller.alertSheet();
        journal.clear();
        window->answer(response);
        const bool proceeds = response == 1000 || response == 1001;
        EXPECT_EQ(journal.everything(), proceeds ? "" : lines({quits()})) << response;
        journal.clear();
    }
}

}  // namespace

}  // namespace morvella::tests
