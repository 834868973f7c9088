#include "live/get_live_user_lib.hpp"
#include "live/library_cfg.hpp"
#include "platform/text.hpp"

namespace morvella {

namespace {

std::string joined(const UserLibraryEntry& entry) {
    std::string path(*entry.parent);
    if (!path.ends_with('/')) {
        path += '/';
    }
    return path.append(*entry.name);
}

}  // namespace

std::optional<std::string> getLiveUserLib::getUserLibraryErrorInt(
    const std::string& preferenceFolder, int32_t* errorInt) const {
    *errorInt = user_library_status::undecided;
    const Files& files = platform_.files;
    const std::string configuration = preferenceFolder + "/Library.cfg";
    if (!files.isReachable(configuration)) {
        *errorInt = user_library_status::noConfiguration;
        return std::nullopt;
    }
    const std::optional<std::string> contents = files.contentsOfFile(configuration);
    if (!contents || !isUtf8(*contents)) {
        *errorInt = user_library_status::noEntry;
        return std::nullopt;
    }
    const UserLibraryEntry entry = scanLibraryCfg(*contents);
    if (!entry.name || !entry.parent) {
        *errorInt = user_library_status::noEntry;
        return std::nullopt;
    }
    std::string path = joined(entry);
    *errorInt =
        files.isReachable(path) ? user_library_status::found : user_library_status::notReachable;
    return path;
}

}  // namespace morvella
