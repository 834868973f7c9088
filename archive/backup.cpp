#include "app/morvella_installer_view_controller.hpp"
#include "app/product.hpp"
#include "platform/paths.hpp"

namespace morvella {

bool MorvellaInstallerViewController::makeZipBackup() {
    if (!require(userLibPath() != nullptr)) {
        return false;
    }
    const std::string userLibrary = *userLibPath();
    const std::string folder = appendingPathComponent(userLibrary, product::folder);
    if (!platform_.files.isReachable(FileUrl::directory(folder))) {
        platform_.log("No previous installation of Morvella found at %@", folder);
        return false;
    }
    const Clock& clock = platform_.clock;
    const std::string stamp = clock.format(clock.now(), "yyyy-MM-dd(HHmmss)");
    const std::string zipFile =
        appendingPathComponent(userLibrary, "MorvellaBackup-" + stamp + ".zip");
    if (!platform_.files.isReadable(folder) || !platform_.files.isWritable(userLibrary)) {
        platform_.log("Making backup failed");
        return false;
    }
    return compressFolderAtToZipFilePath(folder, zipFile);
}

}  // namespace morvella
