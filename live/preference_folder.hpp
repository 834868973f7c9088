#pragma once

#include <string>

namespace morvella {

/// The folder in a home folder where Live keeps its preferences, one subfolder per version. Ends
/// with "/".
std::string preferencesRoot(const std::string& homeDirectory);

/// The preferences folder of one version of Live. It need not exist.
std::string preferenceFolder(const std::string& homeDirectory, const std::string& version);

}  // namespace morvella
