#include <atomic>
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

    template <class T>
    std::shared_ptr<T> make() {
        if constexpr (std::is_same_v<T, View>) {
            return std::make_shared<FakeView>("view", nullptr);
        } else if constexpr (std::is_same_v<T, TextFieldCell>) {
            return std::make_shared<FakeTextFieldCell>("label", journal);
        } else if constexpr (std::is_same_v<T, TextView>) {
            return std::make_shared<FakeTextView>("text", journal);
        } else if constexpr (std::is_same_v<T, ProgressIndicator>) {
            return std::make_shared<FakeProgressIndicator>("indicator", journal);
        } else if constexpr (std::is_same_v<T, Button>) {
            return std::make_shared<FakeButton>("button", journal);
        } else if constexpr (std::is_same_v<T, AttributedString>) {
            return std::make_shared<FakeAttributedString>("document");
        } else if constexpr (std::is_same_v<T, const FileUrl>) {
            return std::make_shared<const FileUrl>(FileUrl::directory("/x"));
        } else {
            return std::make_shared<const std::string>("text");
        }
    }
};

/// Calls `check` with the getter and the setter of each of the nineteen object properties.
template <class Check>
void forEachObjectProperty(Check check) {
    using C = Controller;
    check(&C::initialView, &C::setInitialView);
    check(&C::welcomeView, &C::setWelcomeView);
    check(&C::welcomeVersionString, &C::setWelcomeVersionString);
    check(&C::welcomeBetaString, &C::setWelcomeBetaString);
    check(&C::licenseView, &C::setLicenseView);
    check(&C::licenseText, &C::setLicenseText);
    check(&C::settingsView, &C::setSettingsView);
    check(&C::settingsIndicator, &C::setSettingsIndicator);
    check(&C::settingsInfoText, &C::setSettingsInfoText);
    check(&C::settingsUserLibLabel, &C::setSettingsUserLibLabel);
    check(&C::settingsNextButton, &C::setSettingsNextButton);
    check(&C::doInstallView, &C::setDoInstallView);
    check(&C::doInstallIndicator, &C::setDoInstallIndicator);
    check(&C::postInstallView, &C::setPostInstallView);
    check(&C::postInstallOpenDemoSetCheck, &C::setPostInstallOpenDemoSetCheck);
    check(&C::liveAppPath, &C::setLiveAppPath);
    check(&C::userLibPath, &C::setUserLibPath);
    check(&C::destinationURL, &C::setDestinationURL);
    check(&C::demoSetPath, &C::setDemoSetPath);
}

template <class Owner, class T>
T pointee(std::shared_ptr<T> (Owner::*getter)() const);

/// One thread writes two values in turn while this one reads: every value read is one of the two,
/// whole and alive.
template <class Owner, class Getter, class Setter, class Value>
void expectWholeReads(Owner& owner, Getter get, Setter set, const Value& one, const Value& two) {
    (owner.*set)(one);
    std::atomic<bool> stop = false;
    std::thread writer([&] {
        while (!stop) {
            (owner.*set)(two);
            (owner.*set)(one);
        }
    });
    size_t strangers = 0;
    for (int i = 0; i < 2000; ++i) {
        const auto read = (owner.*get)();
        strangers += read == one || read == two ? 0 : 1;
    }
    stop = true;
    writer.join();
    EXPECT_EQ(strangers, 0U);
}

TEST_F(PropertiesTest, StartAsNothing) {
    forEachObjectProperty([&](auto get, auto) { EXPECT_EQ((controller.*get)(), nullptr); });
    EXPECT_FALSE(controller.resourcesLoaded());
}

TEST_F(PropertiesTest, KeepWhatIsSetApartFromEachOther) {
    std::vector<const void*> set;
    forEachObjectProperty([&](auto get, auto setter) {
        const auto value = make<decltype(pointee(get))>();
        set.push_back(value.get());
        (controller.*setter)(value);
    });
    std::vector<const void*> got;
    forEachObjectProperty([&](auto get, auto) { got.push_back((controller.*get)().get()); });
    EXPECT_EQ(got, set);
    EXPECT_EQ(got.size(), 19U);
    EXPECT_FALSE(controller.resourcesLoaded());
}

TEST_F(PropertiesTest, HoldAStrongReferenceUntilReplaced) {
    forEachObjectProperty([&](auto get, auto set) {
        auto value = make<decltype(pointee(get))>();
        const auto observer = std::weak_ptr(value);
        (controller.*set)(std::move(value));
        EXPECT_FALSE(observer.expired());
        (controller.*set)(make<decltype(pointee(get))>());
        EXPECT_TRUE(observer.expired());
        (controller.*set)(nullptr);
        EXPECT_EQ((controller.*get)(), nullptr);
    });
}

TEST_F(PropertiesTest, LetGoOfEverythingWithTheController) {
    std::vector<std::weak_ptr<const void>> observers;
    {
        Controller shortLived(viewController, platform);
        forEachObjectProperty([&](auto get, auto set) {
            const auto value = make<decltype(pointee(get))>();
            observers.emplace_back(value);
            (shortLived.*set)(value);
        });
        for (const auto& observer : observers) {
            EXPECT_FALSE(observer.expired());
        }
    }
    EXPECT_EQ(observers.size(), 19U);
    for (const auto& observer : observers) {
        EXPECT_TRUE(observer.expired());
    }
}

TEST_F(PropertiesTest, AreReadWholeWhileAnotherThreadWrites) {
    forEachObjectProperty([&](auto get, auto set) {
        expectWholeReads(controller, get, set, make<decltype(pointee(get))>(),
                         make<decltype(pointee(get))>());
    });
}

TEST_F(PropertiesTest, KeepWhetherTheResourcesAreLoaded) {
    controller.setResourcesLoaded(true);
    EXPECT_TRUE(controller.resourcesLoaded());
    controller.setResourcesLoaded(false);
    EXPECT_FALSE(controller.resourcesLoaded());
}

TEST_F(PropertiesTest, ShowWhatAnotherThreadSaidOfTheResources) {
    std::thread writer([&] { controller.setResourcesLoaded(true); });
    writer.join();
    EXPECT_TRUE(controller.resourcesLoaded());
}

TEST_F(PropertiesTest, OfTheLicenceControllerStartAsNothingAndKeepWhatIsSet) {
    MorvellaInstallerLicenseVC license(platform);
    EXPECT_EQ(license.licenseView(), nullptr);
    EXPECT_EQ(license.licenseText(), nullptr);
    const auto view = make<TextView>();
    const auto document = make<AttributedString>();
    license.setLicenseView(view);
    license.setLicenseText(document);
    EXPECT_EQ(license.licenseView(), view);
    EXPECT_EQ(license.licenseText(), document);
}

TEST_F(PropertiesTest, OfTheLicenceControllerAreLetGoOfWithIt) {
    auto view = make<TextView>();
    auto document = make<AttributedString>();
    const std::weak_ptr viewObserver(view);
    const std::weak_ptr documentObserver(document);
    {
        MorvellaInstallerLicenseVC license(platform);
        license.setLicenseView(std::move(view));
        license.setLicenseText(std::move(document));
        EXPECT_FALSE(viewObserver.expired());
        EXPECT_FALSE(documentObserver.expired());
    }
    EXPECT_TRUE(viewObserver.expired());
    EXPECT_TRUE(documentObserver.expired());
}

TEST_F(PropertiesTest, OfTheLicenceControllerAreReadWholeWhileAnotherThreadWrites) {
    using License = MorvellaInstallerLicenseVC;
    License license(platform);
    expectWholeReads(license, &License::licenseView, &License::setLicenseView, make<TextView>(),
                     make<TextView>());
    expectWholeReads(license, &License::licenseText, &License::setLicenseText,
                     make<AttributedString>(), make<AttributedString>());
}

}  // namespace

}  // namespace morvella::tests
