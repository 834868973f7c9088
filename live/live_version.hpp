#pragma once

#include <compare>
#include <cstdint>
#include <string_view>

namespace morvella {

/// The name of each version's preferences folder begins with this.
constexpr std::string_view liveFolderPrefix = "Live ";

/// Versions compare by major, then minor, then patch.
struct LiveVersion {
    int32_t major = 0;
    int32_t minor = 0;
    int32_t patch = 0;

    auto operator<=>(const LiveVersion&) const = default;
};

/// The version in a preferences folder's name: every "Live " is removed, and the rest is read as up
/// to three numbers separated by dots. A missing number is 0.
LiveVersion liveVersionOfFolder(std::string_view folderName);

}  // namespace morvella
