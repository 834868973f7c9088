#include "platform/utf8.hpp"

namespace morvella {

namespace {

bool isBetween(std::string_view bytes, size_t at, unsigned char low, unsigned char high) {
    const auto byte = static_cast<unsigned char>(at < bytes.size() ? bytes[at] : 0);
    return low <= byte && byte <= high;
}

/// The length of the character at the start of `bytes`, which is not empty; 0 if it is malformed.
/// The second byte's range leaves out overlong forms, surrogates and what lies beyond U+10FFFF.
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

}  // namespace morvella
