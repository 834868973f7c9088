#include "live/live_version.hpp"

#include <algorithm>
#include <string>

#include "platform/text.hpp"

namespace morvella {

namespace {

std::string withoutPrefixes(std::string name) {
    for (size_t at = name.find(liveFolderPrefix); at != std::string::npos;
         at = name.find(liveFolderPrefix, at)) {
        name.erase(at, liveFolderPrefix.size());
    }
    return name;
}

/// Removes `text` up to its first dot, inclusive, and returns the number that was there.
int32_t takeNumber(std::string_view& text) {
    const size_t dot = std::min(text.find('.'), text.size());
    const int32_t number = intValue(text.substr(0, dot));
    text.remove_prefix(std::min(dot + 1, text.size()));
    return number;
}

}  // namespace

LiveVersion liveVersionOfFolder(std::string_view folderName) {
    const std::string text = withoutPrefixes(std::string(folderName));
    std::string_view rest = text;
    const int32_t major = takeNumber(rest);
    const int32_t minor = takeNumber(rest);
    return {major, minor, takeNumber(rest)};
}

}  // namespace morvella
