#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class AwakeTest : public InstallerTest {
  protected:
    AwakeTest() {
        useUserLibrary();
        disk.addFolder("/Users/Shared/Morvella");
        tasks.archives["/Bundle/morvella.zip"] = {"Morvella/Morvella.app/Contents/Info.plist",
                                                  "Morvella/Sources/Vellicor.amxd"};
        journal.watcher = [this](const std::string& line) {
            if (line.starts_with("run: ") || line.starts_with("file: ")) {
                ++changes;
                EXPECT_TRUE(application.isActive()) << line;
            }
        };
    }

    int changes = 0;
};

TEST_F(AwakeTest, StaysAwakeWhileItInstalls) {
    controller.doInstallViewAppeared();
    EXPECT_GT(changes, 5);
    EXPECT_FALSE(application.isActive());
}

TEST_F(AwakeTest, MaySleepAfterAFailedInstallation) {
    tasks.archives.clear();
    controller.doInstallViewAppeared();
    EXPECT_GT(changes, 4);
    EXPECT_EQ(window->sheetsWaiting(), 1U);
    EXPECT_FALSE(application.isActive());
}

TEST_F(AwakeTest, StaysAwakeWhileItBacksUpButNotWhileItAsks) {
    disk.addFile(installed + "/My Patches");
    controller.doInstallViewAppeared();
    EXPECT_FALSE(application.isActive());
    window->answer(1000, ControlState::on);
    EXPECT_EQ(changes, 2);
    runLoop.drainMainQueue();
    EXPECT_GT(changes, 5);
    EXPECT_FALSE(application.isActive());
}

TEST_F(AwakeTest, StaysAwakeWhileItWaitsForTheVolume) {
    controller.setUserLibPath(text("/Volumes/Audio"));
    controller.waitForUserLibraryAndProceedToInstall();
    EXPECT_FALSE(application.isActive());
    window->answer(1000);
    EXPECT_TRUE(application.isActive());
    runLoop.tick();
    EXPECT_TRUE(application.isActive());
    disk.addFolder("/Volumes/Audio");
    runLoop.tick();
    EXPECT_FALSE(application.isActive());
}

class AnnouncementTest : public InstallerTest {};

TEST_F(AnnouncementTest, NamesEachPageThatAppears) {
    launchWith("liveapp", "/Applications/Live 11 Suite.app");
    for (const auto& page : {welcomeView, licenseView, postInstallView}) {
        viewController.shown = page;
        controller.viewDidAppear();
    }
    EXPECT_EQ(application.announced,
              (std::vector<std::string>{"Welcome, current step", "Licence, current step",
                                        "Finish, current step"}));
}

TEST_F(AnnouncementTest, ReadsTheStatusLineWhenItChanges) {
    controller.setUserLibPath(text("/Volumes/Audio"));
    controller.waitForUserLibraryAndProceedToInstall();
    window->answer(1000);
    runLoop.tick();
    disk.addFolder("/Volumes/Audio");
    runLoop.tick();
    EXPECT_EQ(application.announced,
              (std::vector<std::string>{"Status: Waiting for the volume to become available...",
                                        "User library available, click next to proceed"}));
}

}  // namespace

}  // namespace morvella::tests
