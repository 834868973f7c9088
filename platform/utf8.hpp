#pragma once

#include <cstddef>
#include <string_view>

namespace morvella {

/// Whether `bytes` are well-formed UTF-8 from the first to the last.
bool isUtf8(std::string_view bytes);

/// How many UTF-16 code units the well-formed UTF-8 `text` takes: the platform's length of a text.
size_t utf16Length(std::string_view text);

}  // namespace morvella
