#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Texts are UTF-8; these functions follow Foundation's rules for them.
namespace morvella {

/// Whether all of `bytes` is well-formed UTF-8.
bool isUtf8(std::string_view bytes);

/// The length of the well-formed UTF-8 `text` in UTF-16 code units, as the platform counts it.
size_t utf16Length(std::string_view text);

/// The number at the start of `text`, after white space and with an optional sign; the rest is
/// ignored. 0 without digits; the nearest 32-bit integer if it is too large or too small.
int32_t intValue(std::string_view text);

/// The pieces of `text` between the occurrences of `separator`, as views of `text`. Adjacent
/// separators have an empty piece between them. `separator` is not empty.
template <class Pieces>
Pieces componentsSeparatedBy(std::string_view text, std::string_view separator) {
    Pieces pieces;
    for (size_t start = 0;;) {
        const size_t end = text.find(separator, start);
        pieces.push_back(text.substr(start, end - start));
        if (end == std::string_view::npos) {
            return pieces;
        }
        start = end + separator.size();
    }
}

}  // namespace morvella
