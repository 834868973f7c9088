#include "app/morvella_installer_view_controller.hpp"
#include "app/product.hpp"

namespace morvella {

// The steps here share one error, which is never cleared, so a later step may log an earlier error.
// Folder URLs are built as directories without querying the disk: if the product folder does not
// exist yet, a queried URL would resolve "ISF" beside it, where the user may have such a folder.

namespace {

FileUrl sharedFolder(const Platform& platform, ErrorOut error) {
    const std::optional<FileUrl> users =
        platform.folders.url(StandardDirectory::users, Domain::local, error);
    if (*error) {
        platform.log("Warning: Couldn't get local domain user folder, error:%@", *error);
    }
    return FileUrl::directoryRelativeTo("Shared", users.value_or(FileUrl::directory("")));
}

void createProductFolder(const Platform& platform, const FileUrl& folder, ErrorOut error) {
    if (!platform.fileChanges.createDirectory(folder, error)) {
        platform.log("Couldn't create shared folder(%@), error:%@", folder, *error);
    }
}

}  // namespace

void MorvellaInstallerViewController::installSharedData() {
    std::optional<Error> error;
    const FileUrl shared = sharedFolder(platform_, &error);
    const FileUrl product = FileUrl::directoryRelativeTo(product::folder, shared);
    // Existing shared data is left alone.
    if (!platform_.files.fileExists(product.path())) {
        unpackSharedData(shared, &error);
    }
}

void MorvellaInstallerViewController::replaceSharedData() {
    std::optional<Error> error;
    const FileUrl shared = sharedFolder(platform_, &error);
    trashIfPresent(FileUrl::directoryRelativeTo(product::folder, shared));
    unpackSharedData(shared, &error);
}

void MorvellaInstallerViewController::unpackSharedData(const FileUrl& sharedFolder,
                                                       ErrorOut error) {
    const FileUrl sharedProduct = FileUrl::directoryRelativeTo(product::folder, sharedFolder);
    createProductFolder(platform_, sharedProduct, error);
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
    const FileUrl shaders = FileUrl::directoryRelativeTo(product::shaderFolder, documentsProduct);
    for (const char* name : product::shaderSubfolders) {
        trashIfPresent(platform_.files.fileUrl(FileUrl::fileRelativeTo(name, shaders).path()));
    }
    createProductFolder(platform_, documentsProduct, error);
    return documents;
}

}  // namespace morvella
