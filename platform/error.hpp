#pragma once

#include <optional>
#include <string>

namespace morvella {

/// Why an operation of the platform failed, in the platform's own words.
struct Error {
    std::string description;

    bool operator==(const Error&) const = default;
};

/// An operation that takes an `ErrorOut` writes it on failure and leaves it alone on success, so
/// that an earlier error stays visible. A null `ErrorOut` says that nobody asks.
using ErrorOut = std::optional<Error>*;

}  // namespace morvella
