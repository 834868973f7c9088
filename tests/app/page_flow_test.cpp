#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class PageFlowTest : public InstallerTest {
  protected:
    void appear(const std::shared_ptr<View>& view) {
        viewController.shown = view;
        controller.viewDidAppear();
    }

    /// Answers the sheet, which must quit the installer.
    void expectAnswerToQuit() {
        window->answer(1000);
        expectEffects({quits()});
    }

    const std::string noLiveSet =
        showsCriticalSheet("Installer can be run only through the provided Live Set");
    const std::string noUserLibrary = showsCriticalSheet("Couldn't get user library path.");
};

TEST_F(PageFlowTest, LoadingResetsTheStateBeforeItChecksTheResources) {
    controller.setResourcesLoaded(true);
    controller.setLiveAppPath(text("/old.app"));
    controller.setUserLibPath(text("/old"));
    controller.setDestinationURL(folderUrl("/old"));
    controller.setDemoSetPath(text("/old.als"));
    bundles.main->documents.clear();

    controller.viewDidLoad();

    EXPECT_FALSE(controller.resourcesLoaded());
    EXPECT_EQ(controller.liveAppPath(), nullptr);
    EXPECT_EQ(controller.userLibPath(), nullptr);
    EXPECT_EQ(controller.destinationURL(), nullptr);
    EXPECT_EQ(controller.demoSetPath(), nullptr);
    EXPECT_EQ(viewController.shown, initialView);
    expectEffects({});
}

TEST_F(PageFlowTest, LoadingShowsTheWelcomePageAfterTheCheckPasses) {
    launchWith("app", "/Kit/");
    bool loadedWhenShown = false;
    viewController.appeared = [&] { loadedWhenShown = controller.resourcesLoaded(); };

    controller.viewDidLoad();

    EXPECT_TRUE(controller.resourcesLoaded());
    EXPECT_TRUE(loadedWhenShown);
    EXPECT_EQ(viewController.shown, welcomeView);
    EXPECT_EQ(textOf(controller.demoSetPath()), demoSet);
}

TEST_F(PageFlowTest, InitialViewWithoutResourcesShowsASheetThatQuits) {
    appear(initialView);
    expectEffects({showsCriticalSheet(
        "Installer bundle corrupt, please dowload the installer again or contact support.")});
    expectAnswerToQuit();
    EXPECT_EQ(viewController.shown, initialView);
}

TEST_F(PageFlowTest, NothingHappensOnPagesThatWaitForAButton) {
    controller.setResourcesLoaded(true);
    for (const auto& page : {initialView, licenseView, postInstallView}) {
        appear(page);
        expectEverything({});
    }
    controller.postInstallViewAppeared();
    expectEverything({});
}

TEST_F(PageFlowTest, WelcomePageReadsTheLiveApplicationAndWaits) {
    launchWith("liveapp", "/Applications/Live.app");
    appear(welcomeView);
    expectEverything({
        "asked: NSArgumentDomain, object for key liveapp",
        "log: using live app found at /Applications/Live.app",
    });
    EXPECT_EQ(viewController.shown, welcomeView);
}

TEST_F(PageFlowTest, WelcomePageWithoutLiveApplicationShowsASheetThatQuits) {
    appear(welcomeView);
    expectEffects({noLiveSet});
    EXPECT_EQ(viewController.shown, welcomeView);
    expectAnswerToQuit();
}

TEST_F(PageFlowTest, SettingsPageFindsTheUserLibraryAndEnablesTheNextButton) {
    disk.addFolder(userLibrary);
    installLive("/Live.app", "11.3.4", "11.3.4");
    controller.setLiveAppPath(text("/Live.app"));
    appear(settingsView);
    expectEffects({
        "control: User Library label says \"/Users/ann/Music/User Library\"",
        "control: next button enabled",
    });
    EXPECT_EQ(viewController.shown, settingsView);
}

TEST_F(PageFlowTest, SettingsPageWithoutUserLibraryShowsASheetAndDoesNotWait) {
    controller.setLiveAppPath(text("/Live.app"));
    appear(settingsView);
    expectEffects({"control: User Library label says \"Not found\"",
                   "log: couldn't get usrlib info, status:1", noUserLibrary});
    expectAnswerToQuit();
}

TEST_F(PageFlowTest, InstallationPageStartsTheInstallation) {
    useUserLibrary();
    appear(doInstallView);
    ASSERT_NE(controller.destinationURL(), nullptr);
    EXPECT_EQ(journal.only({Kind::control}), lines({startsIndicator()}));
}

TEST_F(PageFlowTest, UnknownViewShowsTheUnknownStateSheet) {
    appear(makeView("stranger"));
    expectEffects({reachesUnknownState()});
    expectAnswerToQuit();
}

TEST_F(PageFlowTest, UnconnectedPagesNeverMatchTheShownView) {
    controller.setInitialView(nullptr);
    controller.setWelcomeView(nullptr);
    controller.setLicenseView(nullptr);
    controller.setSettingsView(nullptr);
    controller.setDoInstallView(nullptr);
    appear(postInstallView);
    expectEverything({});
}

TEST_F(PageFlowTest, PagesAreComparedByIdentityNotByHandle) {
    launchWith("liveapp", "/Live.app");
    appear(std::make_shared<OtherHandle>(welcomeView));
    expectEffects({"log: using live app found at /Live.app"});
}

/// Uses one view for two neighbouring pages: the first in the fixed order wins.
TEST_F(PageFlowTest, TheFirstOfTwoPagesWithTheSameViewWins) {
    controller.setResourcesLoaded(true);
    controller.setWelcomeView(initialView);
    appear(initialView);
    expectEffects({});

    controller.setInitialView(makeView("other"));
    controller.setLicenseView(initialView);
    appear(initialView);
    expectEffects({noLiveSet});

    controller.setWelcomeView(welcomeView);
    controller.setSettingsView(initialView);
    appear(initialView);
    expectEffects({});

    controller.setLicenseView(licenseView);
    controller.setDoInstallView(initialView);
    appear(initialView);
    expectEffects({"log: Couldn't get executable", noUserLibrary});

    controller.setSettingsView(settingsView);
    controller.setPostInstallView(initialView);
    useUserLibrary();
    disk.addFolder(installed);
    appear(initialView);
    EXPECT_NE(controller.destinationURL(), nullptr);
}

TEST_F(PageFlowTest, EachButtonOnlyShowsTheNextPage) {
    controller.welcomeButton();
    expectEverything({"page: licence page"});
    controller.licenseAcceptedButton();
    expectEverything({"page: settings page"});
    controller.beginInstallButton();
    expectEverything({"page: installation page"});
}

TEST_F(PageFlowTest, DoneButtonOnlyQuitsUnlessTheDemoSetIsTicked) {
    for (const ControlState state : {ControlState::off, ControlState::mixed}) {
        openDemoSetCheck->currentState = state;
        controller.installDoneButton();
        expectEverything({"application: terminated by nobody"});
    }
}

TEST_F(PageFlowTest, DoneButtonOpensATickedDemoSetAndQuitsEvenIfThatFails) {
    openDemoSetCheck->currentState = ControlState::on;
    controller.setDemoSetPath(text("/Kit/Demo.als"));
    controller.setLiveAppPath(text("/Live.app/Contents/MacOS/Live"));
    for (const bool opens : {true, false}) {
        application.opens = opens;
        controller.installDoneButton();
        expectEverything({
            "application: open /Kit/Demo.als with /Live.app/Contents/MacOS/Live",
            "application: terminated by nobody",
        });
    }
}

}  // namespace

}  // namespace morvella::tests
