#pragma once

#include <optional>
#include <string>

namespace morvella {

/// The platform's description of an error object: its domain, code and user info, not only the
/// message meant for the user.
struct Error {
    std::string description;

    bool operator==(const Error&) const = default;
};

/// An operation that takes an `ErrorOut` sets it if the platform reports an error, whatever the
/// operation returns, and otherwise leaves it alone, so that an earlier error stays visible. If it
/// is null, no error is requested from the platform either.
using ErrorOut = std::optional<Error>*;

}  // namespace morvella
