#pragma once

#include <string>

namespace morvella {

/// Where Live keeps its preferences below a home folder, one folder for each version; ends with
/// "/".
std::string preferencesRoot(const std::string& homeDirectory);

/// The preferences folder of one version of Live. It need not exist.
std::string preferenceFolder(const std::string& homeDirectory, const std::string& version);

}  // namespace morvella
