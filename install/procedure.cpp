#include "app/morvella_installer_view_controller.hpp"
#include "app/product.hpp"

namespace morvella {

namespace {

std::vector<FileUrl> applicationsFolders(const Platform& platform) {
    return platform.folders.urls(StandardDirectory::applications, Domain::local);
}

}  // namespace

bool MorvellaInstallerViewController::isReadyToInstall() const {
    return userLibPath() && !applicationsFolders(platform_).empty();
}

void MorvellaInstallerViewController::installTo(const FileUrl& /*destination*/) {
    if (!require(isReadyToInstall())) {
        return;
    }
    installFontsAndSuite();
    installUtilities();
    installSharedData();
}

void MorvellaInstallerViewController::installToOld(const FileUrl& /*destination*/) {
    if (!require(isReadyToInstall())) {
        return;
    }
    installFontsAndSuite();
    installUtilities();
    replaceSharedData();
}

void MorvellaInstallerViewController::installFontsAndSuite() {
    if (!installFontList({product::fonts.begin(), product::fonts.end()})) {
        platform_.log("Couldn't install fonts.");
    }
    // A failure is noticed later, when the suite's application cannot be hidden.
    decompressResourceToURL(product::suiteArchive, FileUrl::directory(*userLibPath()));
}

void MorvellaInstallerViewController::installUtilities() {
    const FileUrl folder =
        FileUrl::directoryRelativeTo(product::folder, applicationsFolders(platform_).front());
    trashIfPresent(folder);
    std::optional<Error> error;
    if (!platform_.fileChanges.createDirectory(folder, &error)) {
        platform_.log("Creating Morvella folder in /Applications failed with error: %@", error);
        terminateAppWithAlertSheet("Could not access /Applications folder, aborting.");
    }
    for (const char* archive : product::utilityArchives) {
        platform_.log("Installing %@ to %@...", archive, folder.path());
        if (!decompressResourceToURL(archive, folder)) {
            platform_.log("Decompressing resource failed: %@", archive);
            terminateAppWithAlertSheet("Could not install utilities, aborting.");
        }
    }
}

void MorvellaInstallerViewController::trashIfPresent(const FileUrl& item) {
    if (!platform_.files.fileExists(item.path())) {
        return;
    }
    platform_.log("Deleting %@", item.path());
    if (!moveToTrash(item)) {
        platform_.log("Couldn't delete %@", item.path());
    }
}

}  // namespace morvella
