#include "app/morvella_installer_view_controller.hpp"
#include "app/product.hpp"

namespace morvella {

namespace {

std::shared_ptr<DefaultsValue> launchArgument(const Platform& platform, const std::string& key) {
    return platform.userDefaults.open(argumentDomain)->objectForKey(key);
}

}  // namespace

bool MorvellaInstallerViewController::setLiveAppURLFromArgs() {
    const std::shared_ptr<DefaultsValue> value = launchArgument(platform_, "liveapp");
    if (!value) {
        return false;
    }
    setLiveAppPath(std::make_shared<const std::string>(value->text()));
    platform_.log("using live app found at %@", *liveAppPath());
    return true;
}

bool MorvellaInstallerViewController::setDemoSetURLFromArgs() {
    const std::shared_ptr<DefaultsValue> value = launchArgument(platform_, "app");
    if (!value) {
        return false;
    }
    setDemoSetPath(std::make_shared<const std::string>(value->text() + product::demoSet));
    platform_.log("will open demo set at %@", *demoSetPath());
    return true;
}

}  // namespace morvella
