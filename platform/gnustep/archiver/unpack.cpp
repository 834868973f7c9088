#include <algorithm>
#include <clocale>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <system_error>

#include "archiver.hpp"
#include "libarchive.hpp"

namespace morvella {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t readBlockSize = 10240;

// In bytes. The caller may read what is said here only after this process has ended, and a full
// pipe would then keep both waiting for ever.
constexpr std::size_t mostSaid = 1 << 14;

ArchiveReader openZip(const std::string& path) {
    ArchiveReader zip(archive_read_new());
    // The other reader, for streams, would unpack the beginning of a truncated archive.
    archive_read_support_format_zip_seekable(zip.get());
    require(archive_read_open_filename(zip.get(), path.c_str(), readBlockSize) == ARCHIVE_OK,
            zip.get(), path);
    // libarchive composes the letters of names that are marked as UTF-8, unless the reader already
    // has a plain conversion from UTF-8 to UTF-8. Asking for a name in UTF-8 gives it one, so that
    // names keep their bytes.
    const ArchiveEntry entry(archive_entry_new2(zip.get()));
    archive_entry_set_pathname(entry.get(), "name");
    archive_entry_pathname_utf8(entry.get());
    return zip;
}

/// Makes `destination` the current folder, which is what libarchive's checks for entries that lead
/// elsewhere start from.
void enter(const std::string& destination) {
    std::error_code error;
    fs::create_directories(destination, error);
    if (!error) {
        fs::current_path(destination, error);
    }
    if (error) {
        throw std::runtime_error(destination + ": " + error.message());
    }
}

ArchiveWriter openDisk() {
    ArchiveWriter disk(archive_write_disk_new());
    archive_write_disk_set_options(disk.get(), ARCHIVE_EXTRACT_PERM | ARCHIVE_EXTRACT_TIME |
                                                   ARCHIVE_EXTRACT_SECURE_NOABSOLUTEPATHS |
                                                   ARCHIVE_EXTRACT_SECURE_NODOTDOT |
                                                   ARCHIVE_EXTRACT_SECURE_SYMLINKS);
    return disk;
}

/// Whether the entry carries another entry's resource fork or extended attributes.
bool isResourceFork(const fs::path& path) {
    return std::any_of(path.begin(), path.end(), [](const std::string& component) {
        return component == "__MACOSX" || component.starts_with("._");
    });
}

/// The path of a folder without a slash or a dot too many; empty for the destination itself.
fs::path folderAt(const fs::path& path) {
    fs::path folder;
    for (const fs::path& component : path) {
        if (!component.empty() && component != ".") {
            folder /= component;
        }
    }
    return folder;
}

void unpackFile(archive* zip, archive* disk, const std::string& path) {
    try {
        copyContents(zip, disk, path);
    } catch (...) {
        // What is there in part must not pass for the whole file.
        archive_write_finish_entry(disk);
        std::error_code ignored;
        fs::remove(path, ignored);
        throw;
    }
}

void unpackEntry(archive* zip, archive_entry* entry, archive* disk) {
    const std::string path = archive_entry_pathname(entry);
    const auto type = archive_entry_filetype(entry);
    if (type != AE_IFREG && type != AE_IFDIR && type != AE_IFLNK) {
        throw std::runtime_error(path + ": Neither a file nor a folder nor a link");
    }
    if (type == AE_IFDIR && folderAt(path).empty()) {
        return;  // The destination keeps its own permissions.
    }
    // libarchive would put a folder in the link's place; but what a user has linked stays linked.
    if (type == AE_IFDIR && fs::is_symlink(folderAt(path))) {
        throw std::runtime_error(path + ": Cannot extract through symlink");
    }
    // No archive makes a program run as somebody else.
    archive_entry_set_perm(entry, archive_entry_perm(entry) & 0777);
    require(archive_write_header(disk, entry) == ARCHIVE_OK, disk, path);
    if (type == AE_IFREG) {
        unpackFile(zip, disk, path);
    }
    require(archive_write_finish_entry(disk) == ARCHIVE_OK, disk, path);
}

}  // namespace

bool unpack(const std::string& archivePath, const std::string& destination) {
    if (!std::setlocale(LC_CTYPE, "C.UTF-8")) {
        throw std::runtime_error("This system does not know UTF-8");
    }
    const ArchiveReader zip = openZip(archivePath);
    std::cerr << ">>> Copying " << archivePath << '\n';
    enter(destination);
    const ArchiveWriter disk = openDisk();

    std::size_t said = 0;
    std::size_t unsaid = 0;
    const auto report = [&](const std::string& text) {
        if (said + text.size() > mostSaid) {
            ++unsaid;
            return;
        }
        said += text.size();
        std::cerr << "ditto: " << text << '\n';
    };
    archive_entry* entry = nullptr;
    int status = ARCHIVE_OK;
    while (status != ARCHIVE_FATAL &&
           (status = archive_read_next_header(zip.get(), &entry)) != ARCHIVE_EOF) {
        // There is none when the archive is damaged, or the name not in the encoding that it is
        // marked with.
        const char* path = archive_entry_pathname(entry);
        try {
            require(status == ARCHIVE_OK, zip.get(), path ? path : archivePath);
            if (!isResourceFork(path)) {
                unpackEntry(zip.get(), entry, disk.get());
            }
        } catch (const std::runtime_error& failure) {
            report(failure.what());
        }
    }
    if (archive_file_count(zip.get()) == 0) {
        report(archivePath + ": Empty archive");
    }
    if (unsaid > 0) {
        std::cerr << "ditto: " << unsaid << " further errors\n";
    }
    return said + unsaid == 0;
}

}  // namespace morvella
