#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

/// A run on a machine with everything in place. The tests show the pages directly: which button
/// leads to which page is tested elsewhere.
class WholeRunTest : public InstallerTest {
  protected:
    WholeRunTest() {
        launchWith("liveapp", liveApplication);
        launchWith("app", "/Kit/");
        installLive("/Applications/Live 11 Suite.app", "11.3.4 (2023-06-01)", "11.3.4");
        disk.addFile(demoSet);
        disk.addFolder(userLibrary);
        disk.addFolder("/Users/Shared");
        tasks.archives["/Bundle/morvella.zip"] = {"Morvella/Morvella.app/Contents/Info.plist",
                                                  "Morvella/Sources/Vellicor.amxd"};
        tasks.archives["/Bundle/Tressimo.zip"] = {"Tressimo.app/Contents/Info.plist"};
        tasks.archives["/Bundle/ISF.zip"] = {"ISF/Dariwent/a.fs", "ISF/Standard/b.fs"};
        viewController.appeared = [this] { controller.viewDidAppear(); };
    }

    void show(const std::shared_ptr<View>& page) {
        journal.clear();
        viewController.setView(page);
    }

    void goToTheInstallation() {
        controller.viewDidLoad();
        show(settingsView);
        show(doInstallView);
    }

    const std::string liveApplication = "/Applications/Live 11 Suite.app/Contents/MacOS/Live";
    const std::string unpacksSuite = unpacks("morvella.zip", userLibrary);
    const std::string hides = hidingLine + "\nfile: moved " + installed + "/Morvella.app/ to " +
                              installed + "/.Morvella.app";
    const std::string installs =
        startsIndicator() + "\n" + copiesFonts() + "\n" + unpacksSuite + "\n" +
        installsUtilities() + "\n" + createsFolder("/Users/Shared/Morvella") + "\n" +
        logs("Installing ISF.zip...") + "\n" + unpacks("ISF.zip", "/Users/Shared/Morvella") + "\n" +
        hides + "\n" + showsLastPage();
    static constexpr const char* startsAgain =
        "log: starting install after taking care of the old installation.";
};

TEST_F(WholeRunTest, InstallsEverythingAndOpensTheDemoSet) {
    controller.viewDidLoad();
    expectEffects({fillsLicence(), logs("will open demo set at " + demoSet), offersDemoSet(),
                   showsVersion(), "page: welcome page",
                   logs("using live app found at " + liveApplication)});
    show(settingsView);
    expectEffects({"page: settings page",
                   "control: User Library label says \"/Users/ann/Music/User Library\"",
                   "control: next button enabled"});
    show(doInstallView);
    expectEffects({"page: installation page", installs});
    EXPECT_TRUE(disk.holds(installed + "/.Morvella.app"));
    EXPECT_TRUE(disk.holds("/Users/Shared/Morvella/ISF/Standard/b.fs"));
    controller.installDoneButton();
    expectEffects({"application: open " + demoSet + " with " + liveApplication,
                   "application: terminated by nobody"});
}

TEST_F(WholeRunTest, ReplacesAPreviousInstallationAfterABackup) {
    disk.addFile(installed + "/Presets/mine.adv");
    goToTheInstallation();
    window->answer(1000, ControlState::on);
    EXPECT_EQ(journal.only({Kind::command, Kind::file}),
              lines({packs(installed, userLibrary + "/MorvellaBackup-2009-02-13(233130).zip",
                           userLibrary),
                     trashes(installed + "/")}));
    journal.clear();
    runLoop.drainMainQueue();
    expectEffects({startsAgain, installs});
}

TEST_F(WholeRunTest, LeavesTheSharedDataAloneOnASecondInstallation) {
    goToTheInstallation();
    disk.addFile("/Users/Shared/Morvella/ISF/Standard/mine.fs");
    goToTheInstallation();
    window->answer(1000);
    journal.clear();
    runLoop.drainMainQueue();
    expectEffects({startsAgain, startsIndicator(), keepsFonts(), unpacksSuite,
                   deletesFolder("/Applications/Morvella"), installsUtilities(), hides,
                   showsLastPage()});
}

}  // namespace

}  // namespace morvella::tests
