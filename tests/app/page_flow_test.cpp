#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class PageFlowTest : public InstallerTest {
  protected:
    void showOnly(const std::shared_ptr<View>& view) {
        viewController.shown = view;
        controller.viewDidAppear();
    }
};

TEST_F(PageFlowTest, LoadingResetsTheStateBeforeItChecksTheResources) {
    controller.setResourcesLoaded(true);
    controller.setLiveAppPath(text("/old.app"));
    controller.setUserLibPath(text("/old"));
    controller.setDestinationURL(std::make_shared<const FileUrl>(FileUrl::directory("/old")));
    controller.setDemoSetPath(text("/old.als"));
    bundles.main->documents.clear();

    controller.viewDidLoad();

    EXPECT_FALSE(controller.resourcesLoaded());
    EXPECT_EQ(controller.liveAppPath(), nullptr);
    EXPECT_EQ(controller.userLibPath(), nullptr);
    EXPECT_EQ(controller.destinationURL(), nullptr);
    EXPECT_EQ(controller.demoSetPath(), nullptr);
    EXPECT_EQ(viewController.shown, initialView);
    expectEffects("");
}

TEST_F(PageFlowTest, LoadingShowsTheWelcomePageAfterThePassedCheck) {
    launchWith("app", "/Kit/");
    bool loadedWhenShown = false;
    viewController.appeared = [&] { loadedWhenShown = controller.resourcesLoaded(); };

    controller.viewDidLoad();

    EXPECT_TRUE(controller.resourcesLoaded());
    EXPECT_TRUE(loadedWhenShown);
    EXPECT_EQ(viewController.shown, welcomeView);
    EXPECT_EQ(textOf(controller.demoSetPath()),
              "/Kit/Morvella Basic Demo Project/Morvella Basic Demo.als");
    expectEffects({
        "control: licence text filled with licence",
        "log: will open demo set at /Kit/Morvella Basic Demo Project/Morvella Basic Demo.als",
        "control: check box disabled",
        "control: check box hidden",
        "control: check box off",
        "control: version label says \"Morvella v" MORVELLA_VERSION "\"",
        "page: welcome page",
    });
}

TEST_F(PageFlowTest, LoadingKeepsTheInitialViewAfterAFailedCheckAndShowsNothing) {
    bundles.main->resources.erase("morvella.zip");
    controller.viewDidLoad();
    EXPECT_FALSE(controller.resourcesLoaded());
    EXPECT_EQ(viewController.shown, initialView);
    expectEffects({
        "control: licence text filled with licence",
        "log: resource not found:morvella.zip",
    });
}

TEST_F(PageFlowTest, InitialViewWithoutResourcesEndsInASheetThatQuits) {
    showOnly(initialView);
    expectEffects(terminationSheet(
        "Installer bundle corrupt, please dowload the installer again or contact support."));
    window->answer(1000);
    expectEffects({"application: terminated by controller"});
    EXPECT_EQ(viewController.shown, initialView);
}

TEST_F(PageFlowTest, InitialViewWithResourcesDoesNothing) {
    controller.setResourcesLoaded(true);
    showOnly(initialView);
    expectEverything({});
}

TEST_F(PageFlowTest, WelcomePageTakesTheLiveApplicationAndWaits) {
    launchWith("liveapp", "/Applications/Live.app");
    showOnly(welcomeView);
    expectEverything({
        "asked: NSArgumentDomain, object for key liveapp",
        "log: using live app found at /Applications/Live.app",
    });
    EXPECT_EQ(viewController.shown, welcomeView);
}

TEST_F(PageFlowTest, WelcomePageWithoutLiveApplicationEndsInASheetThatQuits) {
    showOnly(welcomeView);
    expectEffects(terminationSheet("Installer can be run only through the provided Live Set"));
    EXPECT_EQ(viewController.shown, welcomeView);
    window->answer(1000);
    expectEffects({"application: terminated by controller"});
}

TEST_F(PageFlowTest, LicencePageDoesNothingOnAppearing) {
    showOnly(licenseView);
    expectEverything({});
}

TEST_F(PageFlowTest, SettingsPageFindsTheUserLibraryAndEnablesTheNextButton) {
    disk.addFolder(userLibrary);
    disk.addFile("/Users/ann/Library/Preferences/Ableton/Live 11.3.4/Library.cfg",
                 "<UserLibrary>\n<ProjectName Value=\"User Library\"/>\n"
                 "<ProjectPath Value=\"/Users/ann/Music\"/>\n</UserLibrary>\n");
    bundles.add("/Live.app").information["CFBundleVersion"] = "11.3.4";
    controller.setLiveAppPath(text("/Live.app"));
    showOnly(settingsView);
    expectEffects({
        "control: User Library label says \"/Users/ann/Music/User Library\"",
        "control: next button enabled",
    });
    EXPECT_EQ(viewController.shown, settingsView);
}

TEST_F(PageFlowTest, SettingsPageWithoutUserLibraryEndsInASheetAndWaitsForNothing) {
    controller.setLiveAppPath(text("/Live.app"));
    showOnly(settingsView);
    expectEffects(lines({"control: User Library label says \"Not found\"",
                         "log: couldn't get usrlib info, status:1"}) +
                  terminationSheet("Couldn't get user library path."));
    window->answer(1000);
    expectEffects({"application: terminated by controller"});
}

TEST_F(PageFlowTest, SettingsPageWithoutLiveApplicationEndsInASheet) {
    showOnly(settingsView);
    expectEffects(lines({"log: Couldn't get executable"}) +
                  terminationSheet("Couldn't get user library path."));
}

TEST_F(PageFlowTest, InstallationPageStartsTheInstallation) {
    useUserLibrary();
    showOnly(doInstallView);
    ASSERT_NE(controller.destinationURL(), nullptr);
    EXPECT_EQ(journal.only({Kind::control}),
              lines({"control: installation indicator started by settings indicator",
                     "control: installation indicator shown"}));
}

TEST_F(PageFlowTest, PostInstallationPageDoesNothingOnAppearing) {
    showOnly(postInstallView);
    expectEverything({});
    controller.postInstallViewAppeared();
    expectEverything({});
}

TEST_F(PageFlowTest, UnknownViewEndsInTheUnknownStateSheet) {
    showOnly(makeView("stranger"));
    expectEffects(
        lines({"log: unknown state reached."}) +
        terminationSheet("The installer reached an unkown state, please try restarting the "
                         "installer.\nIf the problem persists, please contact support."));
    window->answer(1000);
    expectEffects({"application: terminated by controller"});
}

TEST_F(PageFlowTest, APageThatIsNotConnectedIsNotTakenForTheOneShown) {
    controller.setInitialView(nullptr);
    controller.setWelcomeView(nullptr);
    controller.setLicenseView(nullptr);
    controller.setSettingsView(nullptr);
    controller.setDoInstallView(nullptr);
    showOnly(postInstallView);
    expectEverything({});
}

TEST_F(PageFlowTest, PagesAreComparedByTheObjectBehindTheHandle) {
    launchWith("liveapp", "/Live.app");
    showOnly(std::make_shared<OtherHandle>(welcomeView));
    expectEffects({"log: using live app found at /Live.app"});
}

/// Puts one view into two neighbouring pages: the first in the fixed order decides.
TEST_F(PageFlowTest, TheFirstOfTwoEqualPagesDecides) {
    controller.setResourcesLoaded(true);
    controller.setWelcomeView(initialView);
    showOnly(initialView);
    expectEffects("");

    controller.setInitialView(makeView("other"));
    controller.setLicenseView(initialView);
    showOnly(initialView);
    expectEffects(terminationSheet("Installer can be run only through the provided Live Set"));

    controller.setWelcomeView(welcomeView);
    controller.setSettingsView(initialView);
    showOnly(initialView);
    expectEffects("");

    controller.setLicenseView(licenseView);
    controller.setDoInstallView(initialView);
    showOnly(initialView);
    expectEffects(lines({"log: Couldn't get executable"}) +
                  terminationSheet("Couldn't get user library path."));

    controller.setSettingsView(settingsView);
    controller.setPostInstallView(initialView);
    useUserLibrary();
    disk.addFolder(installed);
    showOnly(initialView);
    EXPECT_NE(controller.destinationURL(), nullptr);
}

TEST_F(PageFlowTest, EachButtonOnlyShowsTheNextPage) {
    controller.welcomeButton();
    EXPECT_EQ(viewController.shown, licenseView);
    expectEverything({"page: licence page"});
    controller.licenseAcceptedButton();
    EXPECT_EQ(viewController.shown, settingsView);
    expectEverything({"page: settings page"});
    controller.beginInstallButton();
    EXPECT_EQ(viewController.shown, doInstallView);
    expectEverything({"page: installation page"});
}

TEST_F(PageFlowTest, DoneButtonWithoutTickOnlyQuitsWithoutSender) {
    controller.installDoneButton();
    expectEverything({"application: terminated by nobody"});
}

TEST_F(PageFlowTest, DoneButtonWithMixedTickOnlyQuits) {
    openDemoSetCheck->currentState = ControlState::mixed;
    controller.installDoneButton();
    expectEverything({"application: terminated by nobody"});
}

TEST_F(PageFlowTest, DoneButtonWithTickOpensTheDemoSetAndThenQuits) {
    openDemoSetCheck->currentState = ControlState::on;
    controller.setDemoSetPath(text("/Kit/Demo.als"));
    controller.setLiveAppPath(text("/Live.app/Contents/MacOS/Live"));
    controller.installDoneButton();
    expectEverything({
        "application: open /Kit/Demo.als with /Live.app/Contents/MacOS/Live",
        "application: terminated by nobody",
    });
}

TEST_F(PageFlowTest, DoneButtonQuitsAlsoWhenTheDemoSetIsRefused) {
    openDemoSetCheck->currentState = ControlState::on;
    application.opens = false;
    controller.setDemoSetPath(text("/Kit/Demo.als"));
    controller.setLiveAppPath(text("/Live.app"));
    controller.installDoneButton();
    expectEverything({
        "application: open /Kit/Demo.als with /Live.app",
        "application: terminated by nobody",
    });
}

}  // namespace

}  // namespace morvella::tests
