#pragma once

#include <archive.h>
#include <archive_entry.h>

#include <cerrno>
#include <memory>
#include <string>
#include <system_error>

namespace morvella {

template <auto release>
struct Releaser {
    template <typename Resource>
    void operator()(Resource* resource) const {
        release(resource);
    }
};

using ArchiveReader = std::unique_ptr<archive, Releaser<archive_read_free>>;
using ArchiveWriter = std::unique_ptr<archive, Releaser<archive_write_free>>;
using ArchiveEntry = std::unique_ptr<archive_entry, Releaser<archive_entry_free>>;

/// What libarchive says of the last failure of `source`, with the system's reason where there is
/// one.
inline std::string errorText(archive* source) {
    const char* text = archive_error_string(source);
    const int reason = archive_errno(source);
    // EILSEQ stands for a damaged archive, negative numbers for anything else that is no system
    // error.
    const bool fromSystem = reason > 0 && reason != EILSEQ;
    return std::string(text ? text : "Unknown error") +
           (fromSystem ? ": " + std::generic_category().message(reason) : "");
}

}  // namespace morvella
