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

/// How many bytes the white space character at the start of `text` takes; 0 if none stands there.
/// To Foundation's integers these are U+0000 to U+0020, U+007F to U+00A0, U+2000 to U+200B and
/// U+3000.
size_t whiteSpaceLength(std::string_view text) {
    const auto isBetween = [](char byte, char first, char last) {
        return static_cast<unsigned char>(first) <= static_cast<unsigned char>(byte) &&
               static_cast<unsigned char>(byte) <= static_cast<unsigned char>(last);
    };
    if (!text.empty() && (isBetween(text[0], '\0', ' ') || text[0] == '\x7F')) {
        return 1;
    }
    if (text.size() >= 2 && text[0] == '\xC2' && isBetween(text[1], '\x80', '\xA0')) {
        return 2;
    }
    const bool isWideSpace =
        (text.size() >= 3 && text.starts_with("\xE2\x80") && isBetween(text[2], '\x80', '\x8B')) ||
        text.starts_with("\xE3\x80\x80");
    return isWideSpace ? 3 : 0;
}

}  // namespace

int32_t intValue(std::string_view text) {
    using Limits = std::numeric_limits<int32_t>;
    while (const size_t length = whiteSpaceLength(text)) {
        text.remove_prefix(length);
    }
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
