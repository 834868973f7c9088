#pragma once

#include <optional>
#include <string>

namespace morvella {

/// What went wrong, as the platform describes the error object that it handed out: the domain, the
/// code and what belongs to it, not only the sentence made for the user.
struct Error {
    std::string description;

    bool operator==(const Error&) const = default;
};

/// An operation that takes an `ErrorOut` writes it if the platform hands out an error, whatever the
/// operation returns, and leaves it alone if not, so that an earlier error stays visible. A null
/// `ErrorOut` says that nobody asks: the platform is not asked either.
using ErrorOut = std::optional<Error>*;

}  // namespace morvella
