#include "live/preference_folder.hpp"

#include "live/get_live_user_lib.hpp"
#include "live/live_version.hpp"

namespace morvella {

std::string preferencesRoot(const std::string& homeDirectory) {
    return homeDirectory + "/Library/Preferences/Ableton/";
}

std::string preferenceFolder(const std::string& homeDirectory, const std::string& version) {
    return preferencesRoot(homeDirectory) + "Live " + version;
}

std::optional<std::string> getLiveUserLib::getLatestPreferenceFolder() const {
    return getLatestPreferenceFolderUsingHomeDirectory(platform_.folders.homeDirectory());
}

std::string getLiveUserLib::getPreferenceFolderUsingVersionIdentifier(
    const std::string& version) const {
    return preferenceFolder(platform_.folders.homeDirectory(), version);
}

std::optional<std::string> getLiveUserLib::getLatestPreferenceFolderUsingHomeDirectory(
    const std::string& homeDirectory) const {
    const std::string root = preferencesRoot(homeDirectory);
    const auto names = platform_.files.contentsOfDirectory(root);
    if (!names) {
        return std::nullopt;
    }
    LiveVersion best{-1, -1, -1};
    const std::string* chosen = nullptr;
    for (const std::string& name : *names) {
        if (!name.starts_with(liveFolderPrefix)) {
            continue;
        }
        const LiveVersion version = liveVersionOfFolder(name);
        if (version > best) {
            best = version;
            chosen = &name;
        }
    }
    return chosen ? std::optional(root + *chosen) : std::nullopt;
}

}  // namespace morvella
