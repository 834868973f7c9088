#include "app/morvella_installer_view_controller.hpp"

namespace morvella {

namespace {

constexpr const char* preferenceSuite = "com.Dariwent.Morvella";

}  // namespace

std::shared_ptr<DefaultsValue> MorvellaInstallerViewController::getMorvellaAppPreferenceForKey(
    const std::string& key) {
    return platform_.userDefaults.open(preferenceSuite)->valueForKey(key);
}

void MorvellaInstallerViewController::setMorvellaAppPreferenceToValueForKey(
    const std::shared_ptr<DefaultsValue>& value, const std::string& key) {
    platform_.userDefaults.open(preferenceSuite)->setValueForKey(value, key);
}

}  // namespace morvella
