#include "live/live_version.hpp"

#include <algorithm>
#include <limits>
#include <string>

namespace morvella {

namespace {

std::string withoutPrefixes(std::string name) {
    for (size_t at = name.find(liveFolderPrefix); at != std::string::npos;
         at = name.find(liveFolderPrefix, at)) {
        name.erase(at, liveFolderPrefix.size());
    }
    return name;
}

/// Cuts off what comes before the first dot, and the dot, and returns the number there.
int32_t takeNumber(std::string_view& text) {
    const size_t dot = std::min(text.find('.'), text.size());
    const int32_t number = intValue(text.substr(0, dot));
    text.remove_prefix(std::min(dot + 1, text.size()));
    return number;
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
    const std::string text = withoutPrefixes(std::string(folderName));
    std::string_view rest = text;
    const int32_t major = takeNumber(rest);
    const int32_t minor = takeNumber(rest);
    return {major, minor, takeNumber(rest)};
}

}  // namespace morvella
