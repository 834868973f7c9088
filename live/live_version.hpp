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

/// The version in a preferences folder's name: what is left of it without any "Live ", read as up
/// to three numbers between dots. A missing number is 0.
LiveVersion liveVersionOfFolder(std::string_view folderName);

/// The number at the start of `text`, after white space and with an optional sign; what follows it
/// does not count. 0 without digits; the nearest 32-bit integer if it is too large or too small.
int32_t intValue(std::string_view text);

}  // namespace morvella
