#include "app/morvella_installer_view_controller.hpp"

namespace morvella {

bool MorvellaInstallerViewController::installFontList(const std::vector<std::string>& fontNames) {
    bool installed = true;
    for (const std::string& name : fontNames) {
        installed = installFont(name) && installed;
    }
    return installed;
}

bool MorvellaInstallerViewController::installFont(const std::string& name) {
    const Files& files = platform_.files;
    const auto source = platform_.bundles.mainBundle()->pathForResource(name);
    const FileUrl target =
        files.fileUrl(platform_.folders.homeDirectory() + "/Library/Fonts/" + name);
    if (files.isReachable(target)) {
        platform_.log("Font already installed:%@", name);
    } else if (source) {
        const FileUrl sourceUrl = files.fileUrl(*source);
        platform_.log("Copying: (%@) To: (%@)", sourceUrl, target);
        std::optional<Error> copyError;
        platform_.fileChanges.copyItem(sourceUrl, target, &copyError);
        if (copyError) {
            platform_.log("Copy error:%@", copyError);
        }
    }
    std::optional<Error> reachError;
    if (!files.isReachable(target, &reachError)) {
        platform_.log("Can't find font in the users' fonts library:%@", reachError);
        return false;
    }
    return true;
}

}  // namespace morvella
