#include "support/installer_test.hpp"

#include "app/product.hpp"

namespace morvella::tests {

InstallerTest::InstallerTest() {
    std::vector<std::string> resources = {"license.rtf", "morvella.zip", "Tressimo.zip", "ISF.zip"};
    resources.insert(resources.end(), product::fonts.begin(), product::fonts.end());
    for (const std::string& resource : resources) {
        const std::string path = "/Bundle/" + resource;
        bundles.main->resources[resource] = path;
        disk.addFile(path);
    }
    bundles.main->documents["license.rtf"] = std::make_shared<FakeAttributedString>("licence");

    connect(controller);
    viewController.shown = initialView;
}

void InstallerTest::connect(Controller& target) {
    const auto label = [this](const char* name) {
        return std::make_shared<FakeTextFieldCell>(name, journal);
    };
    const auto indicator = [this](const char* name) {
        return std::make_shared<FakeProgressIndicator>(name, journal);
    };
    target.setInitialView(initialView);
    target.setWelcomeView(welcomeView);
    target.setWelcomeVersionString(label("version label"));
    target.setWelcomeBetaString(label("beta label"));
    target.setLicenseView(licenseView);
    target.setLicenseText(std::make_shared<FakeTextView>("licence text", journal));
    target.setSettingsView(settingsView);
    target.setSettingsIndicator(indicator("settings indicator"));
    target.setSettingsInfoText(label("status line"));
    target.setSettingsUserLibLabel(label("User Library label"));
    target.setSettingsNextButton(std::make_shared<FakeButton>("next button", journal));
    target.setDoInstallView(doInstallView);
    target.setDoInstallIndicator(indicator("installation indicator"));
    target.setPostInstallView(postInstallView);
    target.setPostInstallOpenDemoSetCheck(openDemoSetCheck);
}

void InstallerTest::launchWith(const std::string& key, const std::string& value) {
    userDefaults.suites["NSArgumentDomain"][key] = std::make_shared<FakeDefaultsValue>(value);
}

void InstallerTest::useUserLibrary() {
    disk.addFolder(userLibrary);
    controller.setUserLibPath(text(userLibrary));
}

void InstallerTest::installLive(const std::string& bundle, const std::string& bundleVersion,
                                const std::string& version) {
    bundles.add(bundle).information["CFBundleVersion"] = bundleVersion;
    disk.addFile("/Users/ann/Library/Preferences/Ableton/Live " + version + "/Library.cfg",
                 "<UserLibrary>\n<ProjectName Value=\"User Library\">\n"
                 "<ProjectPath Value=\"/Users/ann/Music\">\n");
}

void InstallerTest::addFonts() {
    for (const char* font : product::fonts) {
        disk.addFile(std::string("/Users/ann/Library/Fonts/") + font);
    }
}

std::string InstallerTest::firstLineOfHideApp() {
    FakePlatform fake;
    FakeViewController door(fake.journal);
    Controller(door, fake.platform).hideApp(FileUrl::directory("/nowhere"));
    const std::string effects = fake.journal.effects();
    return effects.substr(0, effects.find('\n'));
}

void InstallerTest::expectEffects(std::initializer_list<std::string_view> expected, int line) {
    EXPECT_EQ(journal.effects(), lines(expected)) << "compared at line " << line;
    journal.clear();
}

void InstallerTest::expectEverything(std::initializer_list<std::string_view> expected, int line) {
    EXPECT_EQ(journal.everything(), lines(expected)) << "compared at line " << line;
    journal.clear();
}

}  // namespace morvella::tests
