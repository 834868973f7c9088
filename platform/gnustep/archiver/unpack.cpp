#include "unpack.hpp"

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include "libarchive.hpp"

namespace morvella {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t readBlockSize = 1 << 18;
constexpr int noSystemError = -1;

/// Names the entries that could not be unpacked. Says only so much: the caller may read what is
/// said here only after this process has ended, and a full pipe would then keep both waiting for
/// ever.
class Complaints {
  public:
    void add(const std::string& text) {
        if (written_ + text.size() > most) {
            ++unsaid_;
            return;
        }
        std::cerr << "ditto: " << text << '\n';
        written_ += text.size();
    }

    /// Whether there was none.
    [[nodiscard]] bool close() const {
        if (unsaid_ > 0) {
            std::cerr << "ditto: " << unsaid_ << " further errors\n";
        }
        return written_ == 0 && unsaid_ == 0;
    }

  private:
    static constexpr std::size_t most = 1 << 14;
    std::size_t written_ = 0;
    std::size_t unsaid_ = 0;
};

/// libarchive composes the letters of names that are marked as UTF-8, unless the reader already has
/// a plain conversion from UTF-8 to UTF-8. Asking for a name in UTF-8 gives it one, so that names
/// keep their bytes.
void keepNormalForm(archive* zip) {
    const ArchiveEntry entry(archive_entry_new2(zip));
    archive_entry_set_pathname(entry.get(), "name");
    archive_entry_pathname_utf8(entry.get());
}

ArchiveReader openZip(const std::string& path) {
    ArchiveReader zip(archive_read_new());
    // The other reader, for streams, would unpack the beginning of a truncated archive.
    archive_read_support_format_zip_seekable(zip.get());
    if (archive_read_open_filename(zip.get(), path.c_str(), readBlockSize) != ARCHIVE_OK) {
        throw std::runtime_error(path + ": " + errorText(zip.get()));
    }
    keepNormalForm(zip.get());
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
bool isResourceFork(std::string_view path) {
    while (!path.empty()) {
        const std::string_view component = path.substr(0, path.find('/'));
        if (component == "__MACOSX" || component.starts_with("._")) {
            return true;
        }
        path.remove_prefix(std::min(path.size(), component.size() + 1));
    }
    return false;
}

/// The path of a folder without a slash or a dot too many; empty for the destination itself.
fs::path folderOf(archive_entry* entry) {
    fs::path folder;
    for (const fs::path& component : fs::path(archive_entry_pathname(entry))) {
        if (!component.empty() && component != ".") {
            folder /= component;
        }
    }
    return folder;
}

/// Makes the disk's failure the archive's, where the caller looks for it.
int failWith(archive* zip, archive* disk) {
    archive_set_error(zip, noSystemError, "%s", errorText(disk).c_str());
    return ARCHIVE_FAILED;
}

int unpackContents(archive* zip, archive* disk) {
    const void* block = nullptr;
    std::size_t size = 0;
    la_int64_t offset = 0;
    int status = ARCHIVE_OK;
    while ((status = archive_read_data_block(zip, &block, &size, &offset)) == ARCHIVE_OK) {
        if (archive_write_data_block(disk, block, size, offset) != ARCHIVE_OK) {
            return failWith(zip, disk);
        }
    }
    return status == ARCHIVE_EOF ? ARCHIVE_OK : status;
}

/// Unpacks one entry. Returns libarchive's status; `zip` then tells what failed.
int unpackEntry(archive* zip, archive_entry* entry, archive* disk) {
    const auto type = archive_entry_filetype(entry);
    if (type != AE_IFREG && type != AE_IFDIR && type != AE_IFLNK) {
        archive_set_error(zip, noSystemError, "Neither a file nor a folder nor a link");
        return ARCHIVE_FAILED;
    }
    if (type == AE_IFDIR) {
        const fs::path folder = folderOf(entry);
        if (folder.empty()) {
            return ARCHIVE_OK;  // The destination keeps its own permissions.
        }
        // libarchive would put a folder in the link's place; but what a user has linked stays
        // linked.
        std::error_code error;
        if (fs::is_symlink(folder, error)) {
            archive_set_error(zip, noSystemError, "Cannot extract through symlink");
            return ARCHIVE_FAILED;
        }
    }
    // No archive makes a program run as somebody else.
    archive_entry_set_perm(entry, archive_entry_perm(entry) & 0777);
    if (archive_write_header(disk, entry) != ARCHIVE_OK) {
        return failWith(zip, disk);
    }
    const int status = type == AE_IFREG ? unpackContents(zip, disk) : ARCHIVE_OK;
    const bool finished = archive_write_finish_entry(disk) == ARCHIVE_OK;
    if (status != ARCHIVE_OK) {
        // What is there in part must not pass for the whole file.
        std::error_code error;
        fs::remove(archive_entry_pathname(entry), error);
        return status;
    }
    return finished ? ARCHIVE_OK : failWith(zip, disk);
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

    Complaints complaints;
    archive_entry* entry = nullptr;
    int status = ARCHIVE_OK;
    while (status != ARCHIVE_FATAL) {
        status = archive_read_next_header(zip.get(), &entry);
        if (status == ARCHIVE_EOF) {
            break;
        }
        // There is none when the archive is damaged, or the name not in the encoding that it is
        // marked with.
        const char* path = archive_entry_pathname(entry);
        if (status == ARCHIVE_OK && !isResourceFork(path)) {
            status = unpackEntry(zip.get(), entry, disk.get());
        }
        if (status != ARCHIVE_OK) {
            complaints.add(std::string(path ? path : archivePath) + ": " + errorText(zip.get()));
        }
    }
    if (archive_file_count(zip.get()) == 0) {
        complaints.add(archivePath + ": Empty archive");
    }
    return complaints.close();
}

}  // namespace morvella
