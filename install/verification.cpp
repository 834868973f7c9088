#include <algorithm>
#include <array>

#include "app/morvella_installer_view_controller.hpp"
#include "app/product.hpp"
#include "platform/paths.hpp"

namespace morvella {

bool MorvellaInstallerViewController::hideApp(const FileUrl& destination) {
    platform_.log("Hiding the morvella.app to declutter the user library browser...");
    const Files& files = platform_.files;
    const FileUrl source =
        files.fileUrl(appendingPathComponent(destination.path(), product::application));
    if (!files.isReachable(source)) {
        return false;
    }
    const FileUrl target =
        files.fileUrl(appendingPathComponent(destination.path(), product::hiddenApplication));
    if (files.isReachable(target)) {
        platform_.log("App already exists at destination, deleting.");
        if (!moveToTrash(target)) {
            platform_.log("Couldn't move older copy of the hidden app to trash, aborting.");
            return false;
        }
    }
    std::optional<Error> moveError;
    platform_.fileChanges.moveItem(source, target, &moveError);
    if (moveError) {
        platform_.log("Couldn't hide the app file, error:%@", moveError);
        return false;
    }
    std::optional<Error> reachError;
    if (!files.isReachable(target, &reachError)) {
        platform_.log("Hidden app not found at destination url, error:%@", reachError);
        return false;
    }
    return true;
}

bool MorvellaInstallerViewController::checkInstall(const FileUrl& destination) {
    constexpr std::array requiredItems = {product::hiddenApplication, product::device};
    return std::all_of(requiredItems.begin(), requiredItems.end(), [&](const char* item) {
        return platform_.files.isReachable(appendingPathComponent(destination.path(), item));
    });
}

}  // namespace morvella
