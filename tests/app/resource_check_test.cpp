#include "app/morvella_installer_license_vc.hpp"
#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class ResourceCheckTest : public InstallerTest {
  protected:
    static constexpr const char* demoSet =
        "/Kit/Morvella Basic Demo Project/Morvella Basic Demo.als";
};

TEST_F(ResourceCheckTest, LooksAtTheResourcesInTheirOrderAndThenAtTheDemoSet) {
    launchWith("app", "/Kit/");
    disk.addFile(demoSet);
    EXPECT_TRUE(controller.checkAndLoadResources());
    expectEverything({
        "asked: rich text of resource license.rtf",
        "control: licence text filled with licence",
        "asked: path of resource Archivo-Medium.ttf",
        "asked: reachable /Bundle/Archivo-Medium.ttf",
        "asked: path of resource OpenSans-Regular.ttf",
        "asked: reachable /Bundle/OpenSans-Regular.ttf",
        "asked: path of resource morvella.zip",
        "asked: reachable /Bundle/morvella.zip",
        "asked: NSArgumentDomain, object for key app",
        "log: will open demo set at /Kit/Morvella Basic Demo Project/Morvella Basic Demo.als",
        "asked: reachable /Kit/Morvella Basic Demo Project/Morvella Basic Demo.als",
        "control: check box enabled",
        "control: check box shown",
        "control: check box on",
        "control: version label says \"Morvella v" MORVELLA_VERSION "\"",
    });
}

TEST_F(ResourceCheckTest, LeavesShowingAPageToItsCaller) {
    EXPECT_TRUE(controller.checkAndLoadResources());
    EXPECT_FALSE(controller.resourcesLoaded());
    EXPECT_EQ(viewController.shown, initialView);
}

TEST_F(ResourceCheckTest, FailsSilentlyWithoutLicence) {
    bundles.main->resources.erase("license.rtf");
    EXPECT_FALSE(controller.checkAndLoadResources());
    expectEverything({"asked: rich text of resource license.rtf"});
}

TEST_F(ResourceCheckTest, FailsSilentlyWithAnUnreadableLicence) {
    bundles.main->documents.clear();
    EXPECT_FALSE(controller.checkAndLoadResources());
    expectEverything({"asked: rich text of resource license.rtf"});
}

TEST_F(ResourceCheckTest, NamesTheFirstMissingResourceOnly) {
    bundles.main->resources.erase("OpenSans-Regular.ttf");
    bundles.main->resources.erase("morvella.zip");
    launchWith("app", "/Kit/");
    EXPECT_FALSE(controller.checkAndLoadResources());
    expectEverything({
        "asked: rich text of resource license.rtf",
        "control: licence text filled with licence",
        "asked: path of resource Archivo-Medium.ttf",
        "asked: reachable /Bundle/Archivo-Medium.ttf",
        "asked: path of resource OpenSans-Regular.ttf",
        "log: resource not found:OpenSans-Regular.ttf",
    });
    EXPECT_EQ(controller.demoSetPath(), nullptr);
}

TEST_F(ResourceCheckTest, FailsWithoutTheFirstFont) {
    bundles.main->resources.erase("Archivo-Medium.ttf");
    EXPECT_FALSE(controller.checkAndLoadResources());
    expectEffects({"control: licence text filled with licence",
                   "log: resource not found:Archivo-Medium.ttf"});
}

TEST_F(ResourceCheckTest, FailsWithoutTheSuite) {
    bundles.main->resources.erase("morvella.zip");
    EXPECT_FALSE(controller.checkAndLoadResources());
    expectEffects(
        {"control: licence text filled with licence", "log: resource not found:morvella.zip"});
}

TEST_F(ResourceCheckTest, FailsWithAResourceThatIsNotReachable) {
    disk.remove("/Bundle/Archivo-Medium.ttf");
    EXPECT_FALSE(controller.checkAndLoadResources());
    expectEffects({"control: licence text filled with licence",
                   "log: resource not found:Archivo-Medium.ttf"});
}

TEST_F(ResourceCheckTest, PassesWithoutTheOtherArchives) {
    bundles.main->resources.erase("Tressimo.zip");
    bundles.main->resources.erase("ISF.zip");
    EXPECT_TRUE(controller.checkAndLoadResources());
}

TEST_F(ResourceCheckTest, WithholdsTheDemoSetThatIsNotNamed) {
    EXPECT_TRUE(controller.checkAndLoadResources());
    EXPECT_EQ(controller.demoSetPath(), nullptr);
    expectEffects({
        "control: licence text filled with licence",
        "control: check box disabled",
        "control: check box hidden",
        "control: check box off",
        "control: version label says \"Morvella v" MORVELLA_VERSION "\"",
    });
}

/// The text is written out in the core; the version of the build stands in the property lists.
TEST_F(ResourceCheckTest, WelcomePageNamesTheVersionOfTheBuild) {
    EXPECT_TRUE(controller.checkAndLoadResources());
    expectEffects({
        "control: licence text filled with licence",
        "control: check box disabled",
        "control: check box hidden",
        "control: check box off",
        "control: version label says \"Morvella v" MORVELLA_VERSION "\"",
    });
}

TEST_F(ResourceCheckTest, WithholdsTheDemoSetThatIsNotThere) {
    launchWith("app", "/Kit/");
    EXPECT_TRUE(controller.checkAndLoadResources());
    EXPECT_EQ(textOf(controller.demoSetPath()), demoSet);
    expectEffects({
        "control: licence text filled with licence",
        "log: will open demo set at /Kit/Morvella Basic Demo Project/Morvella Basic Demo.als",
        "control: check box disabled",
        "control: check box hidden",
        "control: check box off",
        "control: version label says \"Morvella v" MORVELLA_VERSION "\"",
    });
}

TEST_F(ResourceCheckTest, LicenceControllerFillsItsTextViewOnly) {
    MorvellaInstallerLicenseVC license(platform);
    license.setLicenseView(std::make_shared<FakeTextView>("own text view", journal));
    license.viewDidLoad();
    EXPECT_EQ(license.licenseText(), nullptr);
    expectEverything({
        "asked: rich text of resource license.rtf",
        "control: own text view filled with licence",
    });
}

TEST_F(ResourceCheckTest, LicenceControllerReportsNothingWithoutLicence) {
    bundles.main->resources.erase("license.rtf");
    MorvellaInstallerLicenseVC license(platform);
    license.setLicenseView(std::make_shared<FakeTextView>("own text view", journal));
    license.viewDidLoad();
    expectEffects({"control: own text view filled with nobody"});
}

TEST_F(ResourceCheckTest, LicenceControllerReportsNothingOfAnUnreadableLicence) {
    bundles.main->documents.clear();
    MorvellaInstallerLicenseVC license(platform);
    license.setLicenseView(std::make_shared<FakeTextView>("own text view", journal));
    license.viewDidLoad();
    expectEffects({"control: own text view filled with nobody"});
}

}  // namespace

}  // namespace morvella::tests
