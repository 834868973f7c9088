#include <algorithm>

#include "app/morvella_installer_view_controller.hpp"
#include "live/get_live_user_lib.hpp"
#include "live/preference_folder.hpp"
#include "platform/paths.hpp"
#include "platform/text.hpp"

namespace morvella {

namespace {

using Pieces = std::vector<std::string_view>;

/// The bundle in a Live application's path; nothing if there is none.
std::optional<FileUrl> bundleUrl(std::string_view liveApplication) {
    const auto pieces = componentsSeparatedBy<Pieces>(liveApplication, "/Contents/MacOS/Live");
    const auto isBundle = [](std::string_view piece) { return pathExtension(piece) == "app"; };
    const auto bundle = std::find_if(pieces.begin(), pieces.end(), isBundle);
    return bundle == pieces.end() ? std::nullopt : std::optional(FileUrl::directory(*bundle));
}

/// The version ends at the first space; a date or build may follow.
std::optional<std::string> liveVersion(const Bundles& bundles, std::string_view liveApplication) {
    const std::optional<FileUrl> url = bundleUrl(liveApplication);
    const std::shared_ptr<const Bundle> bundle = url ? bundles.bundleWithUrl(*url) : nullptr;
    const auto version = bundle ? bundle->infoDictionaryText("CFBundleVersion") : std::nullopt;
    return version ? std::optional(version->substr(0, version->find(' '))) : std::nullopt;
}

}  // namespace

bool MorvellaInstallerViewController::setUserLibUsingLiveApp(const Text& liveApplication) {
    if (!liveApplication || utf16Length(*liveApplication) <= 1) {
        platform_.log("Couldn't get executable");
        return false;
    }
    // Without a version, this names a folder that does not exist.
    const auto version = liveVersion(platform_.bundles, *liveApplication);
    const std::string folder =
        preferenceFolder(platform_.folders.homeDirectory(), version.value_or("(null)"));
    int32_t status = user_library_status::undecided;
    const auto userLibrary = getLiveUserLib(platform_).getUserLibraryErrorInt(folder, &status);
    if (!userLibrary) {
        settingsUserLibLabel()->setTitle("Not found");
        setUserLibPath(nullptr);
        platform_.log("couldn't get usrlib info, status:%u", static_cast<uint32_t>(status));
        return false;
    }
    settingsUserLibLabel()->setTitle(*userLibrary);
    setUserLibPath(std::make_shared<const std::string>(*userLibrary));
    return true;
}

void MorvellaInstallerViewController::enableOpenDemoSetUI(bool enable) {
    const std::shared_ptr<Button> checkBox = postInstallOpenDemoSetCheck();
    checkBox->setEnabled(enable);
    checkBox->setHidden(!enable);
    checkBox->setState(enable ? ControlState::on : ControlState::off);
}

void MorvellaInstallerViewController::openDemoSet() {
    if (require(demoSetPath() && liveAppPath())) {
        platform_.application.openFile(*demoSetPath(), *liveAppPath());
    }
}

}  // namespace morvella
