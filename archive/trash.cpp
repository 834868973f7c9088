#include "app/morvella_installer_view_controller.hpp"

namespace morvella {

bool MorvellaInstallerViewController::moveToTrash(const FileUrl& item) {
    std::optional<Error> error;
    if (!platform_.fileChanges.trashItem(item, &error)) {
        platform_.log("failed to move to trash:%@", item);
        return false;
    }
    return true;
}

}  // namespace morvella
