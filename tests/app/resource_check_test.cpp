#include "app/morvella_installer_license_vc.hpp"
#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class ResourceCheckTest : public InstallerTest {
  protected:
    void expectMissing(const std::string& resource) {
        EXPECT_FALSE(controller.checkAndLoadResources());
        expectEffects({fillsLicence(), logs("resource not found:" + resource)});
    }
};

TEST_F(ResourceCheckTest, ChecksTheResourcesInOrderAndThenTheDemoSet) {
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
        offersDemoSet(),
        "control: version label says \"Morvella v" MORVELLA_VERSION "\"",
    });
    EXPECT_FALSE(controller.resourcesLoaded());
    EXPECT_EQ(viewController.shown, initialView);
}

TEST_F(ResourceCheckTest, FailsSilentlyWithoutAReadableLicence) {
    bundles.main->documents.clear();
    EXPECT_FALSE(controller.checkAndLoadResources());
    expectEverything({"asked: rich text of resource license.rtf"});
}

TEST_F(ResourceCheckTest, LogsOnlyTheFirstMissingResource) {
    launchWith("app", "/Kit/");
    bundles.main->resources.erase("morvella.zip");
    expectMissing("morvella.zip");
    bundles.main->resources.erase("OpenSans-Regular.ttf");
    expectMissing("OpenSans-Regular.ttf");
    bundles.main->resources.erase("Archivo-Medium.ttf");
    expectMissing("Archivo-Medium.ttf");
    EXPECT_EQ(controller.demoSetPath(), nullptr);
}

TEST_F(ResourceCheckTest, FailsIfAResourceIsNotReachable) {
    disk.remove("/Bundle/Archivo-Medium.ttf");
    expectMissing("Archivo-Medium.ttf");
}

TEST_F(ResourceCheckTest, PassesWithoutTheOtherArchivesAndWithoutADemoSet) {
    bundles.main->resources.erase("Tressimo.zip");
    bundles.main->resources.erase("ISF.zip");
    EXPECT_TRUE(controller.checkAndLoadResources());
    EXPECT_EQ(controller.demoSetPath(), nullptr);
    expectEffects({fillsLicence(), withholdsDemoSet(), showsVersion()});
}

TEST_F(ResourceCheckTest, WithholdsAMissingDemoSet) {
    launchWith("app", "/Kit/");
    EXPECT_TRUE(controller.checkAndLoadResources());
    EXPECT_EQ(textOf(controller.demoSetPath()), demoSet);
    expectEffects({fillsLicence(), logs("will open demo set at " + demoSet), withholdsDemoSet(),
                   showsVersion()});
}

TEST_F(ResourceCheckTest, LicenceControllerFillsOnlyItsOwnTextView) {
    MorvellaInstallerLicenseVC license(platform);
    license.setLicenseView(std::make_shared<FakeTextView>("own text view", journal));
    license.viewDidLoad();
    EXPECT_EQ(license.licenseText(), nullptr);
    bundles.main->documents.clear();
    license.viewDidLoad();
    expectEverything({
        "asked: rich text of resource license.rtf",
        "control: own text view filled with licence",
        "asked: rich text of resource license.rtf",
        "control: own text view filled with nobody",
    });
}

}  // namespace

}  // namespace morvella::tests
