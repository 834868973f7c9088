#include "app/morvella_installer_view_controller.hpp"

namespace morvella {

bool MorvellaInstallerViewController::removeFilesFromFolder(const std::vector<std::string>& paths,
                                                            const FileUrl& folder) {
    bool removed = true;
    for (const std::string& path : paths) {
        const FileUrl item = platform_.files.fileUrl(FileUrl::fileRelativeTo(path, folder).path());
        // After the first failure, the remaining items stay in place.
        if (platform_.files.isReachable(item) && removed) {
            removed = moveToTrash(item);
        }
    }
    return removed;
}

}  // namespace morvella
