#include "app/morvella_installer_view_controller.hpp"
#include "app/product.hpp"

namespace morvella {

// One error goes through all of this stage and is never cleared: a line about a later step may show
// the error of an earlier one.

FileUrl MorvellaInstallerViewController::sharedFolder(ErrorOut error) const {
    const std::optional<FileUrl> users =
        platform_.folders.url(StandardDirectory::users, Domain::local, error);
    if (*error) {
        platform_.log("Warning: Couldn't get local domain user folder, error:%@", *error);
    }
    return FileUrl::directoryRelativeTo("Shared", users.value_or(FileUrl::directory("")));
}

void MorvellaInstallerViewController::installSharedData(const FileUrl& sharedFolder,
                                                        ErrorOut error) {
    const FileUrl sharedProduct = FileUrl::directoryRelativeTo(product::folder, sharedFolder);
    createProductFolder(sharedProduct, error);
    const FileUrl base = platform_.files.isWritable(sharedProduct.path())
                             ? sharedFolder
                             : fallBackToDocuments(error);
    if (!platform_.files.isReachable(base)) {
        platform_.log("Couldn't acces neither Shared nor User Home folder.");
        terminateAppWithAlertSheet("Could not access shared user data, aborting.");
    }
    const FileUrl target = FileUrl::directoryRelativeTo(product::folder, base);
    for (const char* archive : product::shaderArchives) {
        platform_.log("Installing %@...", archive);
        if (!decompressResourceToURL(archive, target)) {
            platform_.log("Decompressing resource failed: %@", archive);
            terminateAppWithAlertSheet("Could not install user files, aborting.");
        }
    }
}

FileUrl MorvellaInstallerViewController::fallBackToDocuments(ErrorOut error) {
    platform_.log("Shared folder not found, falling back to user folder.");
    const std::optional<FileUrl> found =
        platform_.folders.url(StandardDirectory::documents, Domain::user, error);
    if (*error) {
        platform_.log("Couldn't access documents folder, error:%@", *error);
    }
    FileUrl documents = found.value_or(FileUrl::directory(""));
    const FileUrl documentsProduct = FileUrl::directoryRelativeTo(product::folder, documents);
    const FileUrl shaders = FileUrl::directoryRelativeTo("ISF", documentsProduct);
    for (const char* name : {"Dariwent", "Standard"}) {
        trashIfPresent(FileUrl::fileRelativeTo(name, shaders));
    }
    createProductFolder(documentsProduct, error);
    return documents;
}

void MorvellaInstallerViewController::createProductFolder(const FileUrl& folder, ErrorOut error) {
    if (!platform_.fileChanges.createDirectory(folder, error)) {
        platform_.log("Couldn't create shared folder(%@), error:%@", folder, *error);
    }
}

}  // namespace morvella
