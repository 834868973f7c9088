#include "app/morvella_installer_view_controller.hpp"

namespace morvella {

namespace {

bool installFont(const Platform& platform, const std::string& name) {
    const Files& files = platform.files;
    const auto source = platform.bundles.mainBundle()->pathForResource(name);
    const FileUrl target =
        files.fileUrl(platform.folders.homeDirectory() + "/Library/Fonts/" + name);
    if (files.isReachable(target)) {
        platform.log("Font already installed:%@", name);
    } else if (source) {
        const FileUrl sourceUrl = files.fileUrl(*source);
        platform.log("Copying: (%@) To: (%@)", sourceUrl, target);
        std::optional<Error> copyError;
        platform.fileChanges.copyItem(sourceUrl, target, &copyError);
        if (copyError) {
            platform.log("Copy error:%@", copyError);
        }
    }
    std::optional<Error> reachError;
    if (!files.isReachable(target, &reachError)) {
        platform.log("Can't find font in the users' fonts library:%@", reachError);
        return false;
    }
    return true;
}

}  // namespace

bool MorvellaInstallerViewController::installFontList(const std::vector<std::string>& fontNames) {
    bool installed = true;
    for (const std::string& name : fontNames) {
        installed = installFont(platform_, name) && installed;
    }
    return installed;
}

}  // namespace morvella
