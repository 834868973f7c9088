#include "platform/text.hpp"

#include <algorithm>
#include <limits>

namespace morvella {

namespace {

bool isBetween(std::string_view bytes, size_t at, unsigned char low, unsigned char high) {
    const auto byte = static_cast<unsigned char>(at < bytes.size() ? bytes[at] : 0);
    return low <= byte && byte <= high;
}

/// The length of the character at the start of `bytes`, which is not empty; 0 if it is malformed.
/// The second byte's range excludes overlong forms, surrogates and anything beyond U+10FFFF.
size_t characterLength(std::string_view bytes) {
    const auto lead = static_cast<unsigned char>(bytes[0]);
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        return isBetween(bytes, 1, 0x80, 0xBF) ? 2 : 0;
    }
    const bool third = isBetween(bytes, 2, 0x80, 0xBF);
    if (lead >= 0xE0 && lead <= 0xEF) {
        const unsigned char low = lead == 0xE0 ? 0xA0 : 0x80;
        const unsigned char high = lead == 0xED ? 0x9F : 0xBF;
        return third && isBetween(bytes, 1, low, high) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const unsigned char low = lead == 0xF0 ? 0x90 : 0x80;
        const unsigned char high = lead == 0xF4 ? 0x8F : 0xBF;
        return third && isBetween(bytes, 1, low, high) && isBetween(bytes, 3, 0x80, 0xBF) ? 4 : 0;
    }
    return 0;
}

/// The length in bytes of the white space character at the start of `text`; 0 if there is none. For
/// integers, Foundation skips U+0000 to U+0020, U+007F to U+00A0, U+2000 to U+200B and U+3000.
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

bool isUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const size_t length = characterLength(bytes);
        if (length == 0) {
            return false;
        }
        bytes.remove_prefix(length);
    }
    return true;
}

size_t utf16Length(std::string_view text) {
    size_t length = 0;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        const bool continues = byte >= 0x80 && byte <= 0xBF;
        const bool takesTwo = byte >= 0xF0;
        length += continues ? 0 : takesTwo ? 2 : 1;
    }
    return length;
}

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

}  // namespace morvella
