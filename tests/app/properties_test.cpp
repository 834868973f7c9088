#include <atomic>
#include <cstddef>
#include <thread>
#include <vector>

#include "app/morvella_installer_license_vc.hpp"
#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class PropertiesTest : public ::testing::Test, protected FakePlatform {
  protected:
    FakeViewController viewController{journal};
    Controller controller{viewController, platform};
    MorvellaInstallerLicenseVC license{platform};

    /// A new value for the property that `get` reads. The properties never dereference a value, so
    /// any object will do.
    template <class Owner, class T>
    static std::shared_ptr<T> makeFor(std::shared_ptr<T> (Owner::*)() const) {
        const auto object = std::make_shared<std::max_align_t>();
        return {object, static_cast<T*>(static_cast<void*>(object.get()))};
    }

    /// Calls `check` with the owner, the getter and the setter of every object property.
    template <class Check>
    void forEachObjectProperty(Check check) {
        using C = Controller;
        check(controller, &C::initialView, &C::setInitialView);
        check(controller, &C::welcomeView, &C::setWelcomeView);
        check(controller, &C::welcomeVersionString, &C::setWelcomeVersionString);
        check(controller, &C::welcomeBetaString, &C::setWelcomeBetaString);
        check(controller, &C::licenseView, &C::setLicenseView);
        check(controller, &C::licenseText, &C::setLicenseText);
        check(controller, &C::settingsView, &C::setSettingsView);
        check(controller, &C::settingsIndicator, &C::setSettingsIndicator);
        check(controller, &C::settingsInfoText, &C::setSettingsInfoText);
        check(controller, &C::settingsUserLibLabel, &C::setSettingsUserLibLabel);
        check(controller, &C::settingsNextButton, &C::setSettingsNextButton);
        check(controller, &C::doInstallView, &C::setDoInstallView);
        check(controller, &C::doInstallIndicator, &C::setDoInstallIndicator);
        check(controller, &C::postInstallView, &C::setPostInstallView);
        check(controller, &C::postInstallOpenDemoSetCheck, &C::setPostInstallOpenDemoSetCheck);
        check(controller, &C::liveAppPath, &C::setLiveAppPath);
        check(controller, &C::userLibPath, &C::setUserLibPath);
        check(controller, &C::destinationURL, &C::setDestinationURL);
        check(controller, &C::demoSetPath, &C::setDemoSetPath);
        using L = MorvellaInstallerLicenseVC;
        check(license, &L::licenseView, &L::setLicenseView);
        check(license, &L::licenseText, &L::setLicenseText);
    }
};

TEST_F(PropertiesTest, StoreTheirValuesIndependently) {
    std::vector<const void*> set;
    forEachObjectProperty([&](auto& owner, auto get, auto setter) {
        EXPECT_EQ((owner.*get)(), nullptr);
        const auto value = makeFor(get);
        set.push_back(value.get());
        (owner.*setter)(value);
    });
    std::vector<const void*> got;
    forEachObjectProperty(
        [&](auto& owner, auto get, auto) { got.push_back((owner.*get)().get()); });
    EXPECT_EQ(got, set);
    EXPECT_FALSE(controller.resourcesLoaded());
}

TEST_F(PropertiesTest, HoldAStrongReferenceUntilReplaced) {
    forEachObjectProperty([&](auto& owner, auto get, auto set) {
        auto value = makeFor(get);
        const auto observer = std::weak_ptr(value);
        (owner.*set)(std::move(value));
        EXPECT_FALSE(observer.expired());
        (owner.*set)(makeFor(get));
        EXPECT_TRUE(observer.expired());
        (owner.*set)(nullptr);
        EXPECT_EQ((owner.*get)(), nullptr);
    });
}

/// Another thread alternates between two values: every value read must be one of them.
TEST_F(PropertiesTest, CanBeReadWhileAnotherThreadWrites) {
    forEachObjectProperty([&](auto& owner, auto get, auto set) {
        const auto one = makeFor(get);
        const auto two = makeFor(get);
        (owner.*set)(one);
        std::atomic<bool> stop = false;
        std::thread writer([&] {
            while (!stop) {
                (owner.*set)(two);
                (owner.*set)(one);
            }
        });
        size_t others = 0;
        for (int i = 0; i < 2000; ++i) {
            const auto read = (owner.*get)();
            others += read == one || read == two ? 0 : 1;
        }
        stop = true;
        writer.join();
        EXPECT_EQ(others, 0U);
    });
}

TEST_F(PropertiesTest, StoreWhetherTheResourcesAreLoaded) {
    EXPECT_FALSE(controller.resourcesLoaded());
    controller.setResourcesLoaded(true);
    EXPECT_TRUE(controller.resourcesLoaded());
    controller.setResourcesLoaded(false);
    EXPECT_FALSE(controller.resourcesLoaded());
}

}  // namespace

}  // namespace morvella::tests
