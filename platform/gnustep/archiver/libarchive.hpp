#pragma once

#include <archive.h>
#include <archive_entry.h>

#include <cerrno>
#include <cstdint>
#include <memory>
#include <stdexcept>
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

/// Unless a call succeeded, throws what libarchive says of the last failure of `source`, with the
/// system's reason where there is one.
inline void require(bool succeeded, archive* source, const std::string& path) {
    if (succeeded) {
        return;
    }
    const char* text = archive_error_string(source);
    const int reason = archive_errno(source);
    // EILSEQ stands for a damaged archive, negative numbers for anything else that is no system
    // error.
    const bool fromSystem = reason > 0 && reason != EILSEQ;
    throw std::runtime_error(path + ": " + (text ? text : "Unknown error") +
                             (fromSystem ? ": " + std::generic_category().message(reason) : ""));
}

/// Copies the contents of the entry that both stand at. Returns their size in bytes.
inline std::int64_t copyContents(archive* from, archive* to, const std::string& path) {
    const void* block = nullptr;
    std::size_t size = 0;
    la_int64_t offset = 0;
    std::int64_t copied = 0;
    int status = ARCHIVE_OK;
    while ((status = archive_read_data_block(from, &block, &size, &offset)) == ARCHIVE_OK) {
        require(archive_write_data(to, block, size) == static_cast<la_ssize_t>(size), to, path);
        copied += static_cast<std::int64_t>(size);
    }
    require(status == ARCHIVE_EOF, from, path);
    return copied;
}

}  // namespace morvella
