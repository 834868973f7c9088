#pragma once

#include <optional>
#include <string_view>

namespace morvella {

/// What a `Library.cfg` says of the User Library. The values are views of the text they come from.
struct UserLibraryEntry {
    std::optional<std::string_view> name;
    std::optional<std::string_view> parent;
};

/// Reads `text`, which is UTF-8, line by line. A line that holds a value's marker inside the User
/// Library section gives the text between its quotes if there are exactly two; of each kind the
/// last value counts. Nothing is parsed as markup and no escapes are decoded.
UserLibraryEntry scanLibraryCfg(std::string_view text);

}  // namespace morvella
