#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class PreferencesTest : public InstallerTest {};

TEST_F(PreferencesTest, AreReadByKeyValueCodingFromTheirOwnSuite) {
    const auto stored = std::make_shared<FakeDefaultsValue>("stored");
    userDefaults.suites["com.Dariwent.Morvella"]["colour"] = stored;
    EXPECT_EQ(controller.getMorvellaAppPreferenceForKey("colour"), stored);
    expectEverything({"asked: com.Dariwent.Morvella, value for key colour"});
}

TEST_F(PreferencesTest, AreNullForAnUnknownKey) {
    EXPECT_EQ(controller.getMorvellaAppPreferenceForKey("colour"), nullptr);
}

TEST_F(PreferencesTest, AreStoredByKeyValueCodingInTheirOwnSuite) {
    const auto value = std::make_shared<FakeDefaultsValue>("new");
    controller.setMorvellaAppPreferenceToValueForKey(value, "colour");
    expectEverything({"defaults: com.Dariwent.Morvella, value new for key colour"});
    EXPECT_EQ(controller.getMorvellaAppPreferenceForKey("colour"), value);
}

TEST_F(PreferencesTest, ReopenTheirSuiteOnEachAccess) {
    controller.getMorvellaAppPreferenceForKey("colour");
    controller.setMorvellaAppPreferenceToValueForKey(nullptr, "colour");
    controller.getMorvellaAppPreferenceForKey("colour");
    EXPECT_EQ(userDefaults.opened, std::vector<std::string>(3, "com.Dariwent.Morvella"));
}

TEST_F(PreferencesTest, CanBeSetToNull) {
    controller.setMorvellaAppPreferenceToValueForKey(nullptr, "colour");
    expectEverything({"defaults: com.Dariwent.Morvella, value nobody for key colour"});
}

}  // namespace

}  // namespace morvella::tests
