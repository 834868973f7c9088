#include "app/morvella_installer_view_controller.hpp"
#include "platform/text.hpp"

namespace morvella {

namespace {

constexpr const char* archiver = "/usr/bin/ditto";

}  // namespace

bool MorvellaInstallerViewController::decompressResourceToURL(const std::string& resource,
                                                              const FileUrl& destination) {
    const auto archive = platform_.bundles.mainBundle()->pathForResource(resource);
    if (!archive) {
        return false;
    }
    const auto result = platform_.tasks.run(
        {.launchPath = archiver, .arguments = {"-v", "-x", "-k", *archive, destination.path()}});
    if (!result) {
        return false;
    }
    if (!result->output.empty() && isUtf8(result->output)) {
        platform_.log("decompress status=%@", result->output);
    }
    return result->terminationStatus == 0;
}

bool MorvellaInstallerViewController::compressFolderAtToZipFilePath(const std::string& folder,
                                                                    const std::string& zipFile) {
    if (!require(userLibPath() != nullptr)) {
        return false;
    }
    const auto result = platform_.tasks.run(
        {.launchPath = archiver,
         .arguments = {"-c", "-k", "--sequesterRsrc", "--keepParent", folder, zipFile},
         .currentDirectoryPath = *userLibPath()});
    return result && result->terminationStatus == 0;
}

}  // namespace morvella
