#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class WaitingTest : public InstallerTest {
  protected:
    WaitingTest() { controller.setUserLibPath(text(userLibrary)); }

    /// Waits and dismisses the sheet, which starts the timer.
    void waitAndDismissSheet() {
        controller.waitForUserLibraryAndProceedToInstall();
        window->answer(1000);
        journal.clear();
    }
};

TEST_F(WaitingTest, EnablesTheNextButtonAtOnceWhenReachable) {
    disk.addFolder(userLibrary);
    controller.waitForUserLibraryAndProceedToInstall();
    expectEverything({
        "asked: reachable /Users/ann/Music/User Library/",
        "control: next button enabled",
    });
    EXPECT_EQ(window->sheetsWaiting(), 0U);
    EXPECT_EQ(runLoop.tick(), 0U);
}

TEST_F(WaitingTest, TellsTheUserWhenNotReachable) {
    controller.waitForUserLibraryAndProceedToInstall();
    expectEverything({
        "asked: reachable /Users/ann/Music/User Library",
        "log: UL unavailable",
        "control: status line says \"Status: Waiting for the volume to become available...\"",
        "control: settings indicator started by controller",
        "control: settings indicator shown",
        "window: made key by controller",
        "sheet: critical \"User Library is currently not available\", \"If you are using external "
        "or network drive please make sure that it is connected.\nOnce it's connected the "
        "installation will proceed.\"",
    });
}

TEST_F(WaitingTest, PollsEvery5SecondsAfterTheSheetWhateverTheAnswer) {
    for (const int response : {1000, 1001, 0}) {
        controller.waitForUserLibraryAndProceedToInstall();
        journal.clear();
        window->answer(response);
        expectEverything({"timer: every 5 seconds"});
    }
}

TEST_F(WaitingTest, PollsSilentlyAndIndefinitely) {
    waitAndDismissSheet();
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(runLoop.tick(), 1U);
        expectEverything({"asked: reachable /Users/ann/Music/User Library"});
    }
}

TEST_F(WaitingTest, LetsTheUserProceedOnceReachable) {
    waitAndDismissSheet();
    runLoop.tick();
    journal.clear();
    disk.addFolder(userLibrary);
    runLoop.tick();
    expectEverything({
        "asked: reachable /Users/ann/Music/User Library",
        "timer: invalidated",
        "control: next button enabled",
        "control: status line says \"User library available, click next to proceed\"",
        "control: settings indicator hidden",
        "control: settings indicator stopped by controller",
        "control: next button enabled",
    });
    EXPECT_EQ(viewController.shown, initialView);
    EXPECT_EQ(runLoop.tick(), 0U);
    expectEverything({});
}

TEST_F(WaitingTest, ChecksNothingUntilTheTimerFiresAfterTheSheet) {
    controller.waitForUserLibraryAndProceedToInstall();
    disk.addFolder(userLibrary);
    journal.clear();
    EXPECT_EQ(runLoop.tick(), 0U);
    window->answer(1000);
    expectEverything({"timer: every 5 seconds"});
    runLoop.tick();
    EXPECT_EQ(journal.only({Kind::timer}), lines({"timer: invalidated"}));
}

TEST_F(WaitingTest, PollsForTheUserLibrarySetWhenTheSheetWasDismissed) {
    controller.waitForUserLibraryAndProceedToInstall();
    controller.setUserLibPath(text("/Volumes/Changed"));
    window->answer(1000);
    controller.setUserLibPath(text("/Volumes/Too late"));
    disk.addFolder("/Volumes/Too late");
    journal.clear();
    runLoop.tick();
    expectEverything({"asked: reachable /Volumes/Changed"});
}

TEST_F(WaitingTest, RetainsTheControllerUntilReachable) {
    const long before = viewController.object.use_count();
    controller.waitForUserLibraryAndProceedToInstall();
    EXPECT_GT(viewController.object.use_count(), before);
    window->answer(1000);
    EXPECT_GT(viewController.object.use_count(), before);
    disk.addFolder(userLibrary);
    runLoop.tick();
    EXPECT_EQ(viewController.object.use_count(), before);
}

}  // namespace

}  // namespace morvella::tests
