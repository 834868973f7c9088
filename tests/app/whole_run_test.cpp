#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

/// A run on a machine where everything is in its place, from the first page to the last.
class WholeRunTest : public InstallerTest {
  protected:
    WholeRunTest() {
        launchWith("liveapp", "/Applications/Live 11 Suite.app/Contents/MacOS/Live");
        launchWith("app", "/Kit/");
        bundles.add("/Applications/Live 11 Suite.app").information["CFBundleVersion"] =
            "11.3.4 (2023-06-01)";
        disk.addFile("/Users/ann/Library/Preferences/Ableton/Live 11.3.4/Library.cfg",
                     "<UserLibrary>\n<ProjectName Value=\"User Library\"/>\n"
                     "<ProjectPath Value=\"/Users/ann/Music\"/>\n</UserLibrary>\n");
        disk.addFile("/Kit/Morvella Basic Demo Project/Morvella Basic Demo.als");
        disk.addFolder(userLibrary);
        disk.addFolder("/Users/Shared");
        disk.addFolder("/Users/ann/Library/Fonts");
        tasks.archives["/Bundle/morvella.zip"] = {"Morvella/Morvella.app/Contents/Info.plist",
                                                  "Morvella/Sources/Vellicor.amxd"};
        tasks.archives["/Bundle/Tressimo.zip"] = {"Tressimo.app/Contents/Info.plist"};
        tasks.archives["/Bundle/ISF.zip"] = {"ISF/Dariwent/a.fs", "ISF/Standard/b.fs"};
        viewController.appeared = [this] { controller.viewDidAppear(); };
    }

    void walkToTheInstallation() {
        controller.viewDidLoad();
        controller.welcomeButton();
        controller.licenseAcceptedButton();
        journal.clear();
        controller.beginInstallButton();
    }

    const std::string suiteInstalled =
        "log: Copying: (file:///Bundle/Archivo-Medium.ttf) To: "
        "(file:///Users/ann/Library/Fonts/Archivo-Medium.ttf)\n"
        "file: copied /Bundle/Archivo-Medium.ttf to "
        "/Users/ann/Library/Fonts/Archivo-Medium.ttf\n"
        "log: Copying: (file:///Bundle/OpenSans-Regular.ttf) To: "
        "(file:///Users/ann/Library/Fonts/OpenSans-Regular.ttf)\n"
        "file: copied /Bundle/OpenSans-Regular.ttf to "
        "/Users/ann/Library/Fonts/OpenSans-Regular.ttf\n"
        "run: /usr/bin/ditto | -v | -x | -k | /Bundle/morvella.zip | "
        "/Users/ann/Music/User Library\n"
        "file: created /Applications/Morvella/\n"
        "log: Installing Tressimo.zip to /Applications/Morvella...\n"
        "run: /usr/bin/ditto | -v | -x | -k | /Bundle/Tressimo.zip | /Applications/Morvella\n"
        "file: created /Users/Shared/Morvella/\n"
        "log: Installing ISF.zip...\n"
        "run: /usr/bin/ditto | -v | -x | -k | /Bundle/ISF.zip | /Users/Shared/Morvella\n" +
        hidingLine +
        "\n"
        "file: moved /Users/ann/Music/User Library/Morvella/Morvella.app/ to "
        "/Users/ann/Music/User Library/Morvella/.Morvella.app\n"
        "control: installation indicator stopped by controller\n"
        "page: post-installation page\n";
};

TEST_F(WholeRunTest, InstallsEverythingAndOpensTheDemoSet) {
    controller.viewDidLoad();
    expectEffects({
        "control: licence text filled with licence",
        "log: will open demo set at /Kit/Morvella Basic Demo Project/Morvella Basic Demo.als",
        "control: check box enabled",
        "control: check box shown",
        "control: check box on",
        "control: version label says \"Morvella v" MORVELLA_VERSION "\"",
        "page: welcome page",
        "log: using live app found at /Applications/Live 11 Suite.app/Contents/MacOS/Live",
    });
    controller.welcomeButton();
    controller.licenseAcceptedButton();
    expectEffects({
        "page: licence page",
        "page: settings page",
        "control: User Library label says \"/Users/ann/Music/User Library\"",
        "control: next button enabled",
    });
    controller.beginInstallButton();
    expectEffects(lines({"page: installation page",
                         "control: installation indicator started by settings indicator",
                         "control: installation indicator shown"}) +
                  suiteInstalled);
    EXPECT_TRUE(disk.holds("/Users/ann/Music/User Library/Morvella/.Morvella.app"));
    EXPECT_TRUE(disk.holds("/Users/Shared/Morvella/ISF/Standard/b.fs"));
    controller.installDoneButton();
    expectEffects({
        "application: open /Kit/Morvella Basic Demo Project/Morvella Basic Demo.als with "
        "/Applications/Live 11 Suite.app/Contents/MacOS/Live",
        "application: terminated by nobody",
    });
}

TEST_F(WholeRunTest, ReplacesAPreviousInstallationAfterABackup) {
    disk.addFile("/Users/ann/Music/User Library/Morvella/Presets/mine.adv");
    walkToTheInstallation();
    journal.clear();
    window->answer(1000, ControlState::on);
    expectEffects({
        "control: new indicator shown",
        "control: new indicator started by controller",
        "run: /usr/bin/ditto | -c | -k | --sequesterRsrc | --keepParent | "
        "/Users/ann/Music/User Library/Morvella | "
        "/Users/ann/Music/User Library/MorvellaBackup-2009-02-13(233130).zip in "
        "/Users/ann/Music/User Library",
        "control: new indicator stopped by controller",
        "control: new indicator hidden",
        "file: trashed /Users/ann/Music/User Library/Morvella/",
        "queue: work put on the main queue",
    });
    runLoop.drainMainQueue();
    expectEffects(lines({"log: starting install after taking care of the old installation.",
                         "control: installation indicator started by settings indicator",
                         "control: installation indicator shown"}) +
                  suiteInstalled);
}

TEST_F(WholeRunTest, InstallsASecondTimeButLeavesWhatIsShared) {
    walkToTheInstallation();
    disk.addFile("/Users/Shared/Morvella/ISF/Standard/mine.fs");
    walkToTheInstallation();
    window->answer(1000);
    journal.clear();
    runLoop.drainMainQueue();
    expectEffects({
        "log: starting install after taking care of the old installation.",
        "control: installation indicator started by settings indicator",
        "control: installation indicator shown",
        "log: Font already installed:Archivo-Medium.ttf",
        "log: Font already installed:OpenSans-Regular.ttf",
        "run: /usr/bin/ditto | -v | -x | -k | /Bundle/morvella.zip | "
        "/Users/ann/Music/User Library",
        "log: Deleting /Applications/Morvella",
        "file: trashed /Applications/Morvella/",
        "file: created /Applications/Morvella/",
        "log: Installing Tressimo.zip to /Applications/Morvella...",
        "run: /usr/bin/ditto | -v | -x | -k | /Bundle/Tressimo.zip | /Applications/Morvella",
        hidingLine,
        "file: moved /Users/ann/Music/User Library/Morvella/Morvella.app/ to "
        "/Users/ann/Music/User Library/Morvella/.Morvella.app",
        "control: installation indicator stopped by controller",
        "page: post-installation page",
    });
}

TEST_F(WholeRunTest, InstallsOnceTheVolumeIsMounted) {
    disk.remove(userLibrary);
    controller.viewDidLoad();
    controller.welcomeButton();
    controller.licenseAcceptedButton();
    EXPECT_EQ(window->sheetsWaiting(), 1U);
    window->answer(1000);
    runLoop.tick();
    EXPECT_EQ(journal.only({Kind::control}).find("next button enabled"), std::string::npos);
    disk.addFolder(userLibrary);
    runLoop.tick();
    EXPECT_EQ(viewController.shown, settingsView);
    journal.clear();
    controller.beginInstallButton();
    expectEffects(lines({"page: installation page",
                         "control: installation indicator started by settings indicator",
                         "control: installation indicator shown"}) +
                  suiteInstalled);
}

TEST_F(WholeRunTest, AsksForTheLiveApplicationOnTheWelcomePage) {
    userDefaults.suites.clear();
    controller.viewDidLoad();
    expectEffects(lines({"control: licence text filled with licence", "control: check box disabled",
                         "control: check box hidden", "control: check box off",
                         "control: version label says \"Morvella v" MORVELLA_VERSION "\"",
                         "page: welcome page"}) +
                  terminationSheet("Installer can be run only through the provided Live Set"));
    EXPECT_EQ(viewController.shown, welcomeView);
}

TEST_F(WholeRunTest, ASuiteWithoutItsApplicationStaysOnTheInstallationPage) {
    tasks.archives["/Bundle/morvella.zip"] = {"Morvella/Sources/Vellicor.amxd"};
    walkToTheInstallation();
    EXPECT_EQ(viewController.shown, doInstallView);
    EXPECT_EQ(journal.only({Kind::sheet}), lines({"sheet: critical \"Install failed\" [Quit]"}));
}

TEST_F(WholeRunTest, ASuiteWithoutItsDeviceStaysOnTheInstallationPage) {
    tasks.archives["/Bundle/morvella.zip"] = {"Morvella/Morvella.app/Contents/Info.plist"};
    walkToTheInstallation();
    EXPECT_EQ(viewController.shown, doInstallView);
    EXPECT_EQ(journal.only({Kind::sheet}),
              lines({"sheet: critical \"Install failed to verify, aborting.\" [Quit]"}));
}

TEST_F(WholeRunTest, AMissingResourceEndsOnTheInitialView) {
    bundles.main->resources.erase("OpenSans-Regular.ttf");
    controller.viewDidLoad();
    controller.viewDidAppear();
    expectEffects(
        lines({"control: licence text filled with licence",
               "log: resource not found:OpenSans-Regular.ttf"}) +
        terminationSheet(
            "Installer bundle corrupt, please dowload the installer again or contact support."));
    window->answer(1000);
    expectEffects({"application: terminated by controller"});
}

}  // namespace

}  // namespace morvella::tests
