#include "live/live_version.hpp"

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "platform/paths.hpp"

namespace morvella {

namespace {

std::string withoutPrefixes(std::string_view name) {
    std::string text;
    for (const std::string_view piece :
         componentsSeparatedBy<std::vector<std::string_view>>(name, liveFolderPrefix)) {
        text += piece;
    }
    return text;
}

}  // namespace

int32_t intValue(std::string_view text) {
    using Limits = std::numeric_limits<int32_t>;
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    int64_t value = 0;
    for (const char digit : text) {
        if (digit < '0' || digit > '9') {
            break;
        }
        value = std::min<int64_t>(value * 10 + (digit - '0'), int64_t{Limits::max()} + 1);
    }
    return static_cast<int32_t>(negative ? -value : std::min<int64_t>(value, Limits::max()));
}

LiveVersion liveVersionOfFolder(std::string_view folderName) {
    const std::string text = withoutPrefixes(folderName);
    const auto pieces = componentsSeparatedBy<std::vector<std::string_view>>(text, ".");
    const auto number = [&](size_t i) { return i < pieces.size() ? intValue(pieces[i]) : 0; };
    return {number(0), number(1), number(2)};
}

}  // namespace morvella
