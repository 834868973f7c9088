#pragma once

#include <optional>
#include <string_view>

namespace morvella {

/// The User Library entry of a `Library.cfg`. The values are views of the text they come from.
struct UserLibraryEntry {
    std::optional<std::string_view> name;
    std::optional<std::string_view> parent;
};

/// Reads `text`, which is UTF-8, line by line. In the User Library section, a line with a value's
/// marker provides the text between its quotes if it has exactly two; the last value of each kind
/// wins. Nothing is parsed as markup and no escapes are decoded.
UserLibraryEntry scanLibraryCfg(std::string_view text);

}  // namespace morvella
