#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

#include "archiver.hpp"
#include "libarchive.hpp"

namespace morvella {
namespace {

namespace fs = std::filesystem;

/// The absolute path of a folder, ending in its name; a link to a folder keeps its own name.
fs::path absoluteFolder(const std::string& folder) {
    std::error_code error;
    if (!fs::is_directory(folder, error)) {
        throw std::runtime_error(folder + ": " + (error ? error.message() : "Not a directory"));
    }
    fs::path path = fs::absolute(folder);
    if (!path.has_filename()) {
        path = path.parent_path();
    }
    const bool endsInDots = path.filename() == "." || path.filename() == "..";
    return endsInDots ? fs::canonical(path) : path;
}

bool isInside(const fs::path& inner, const fs::path& outer) {
    return std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end()).first ==
           outer.end();
}

/// libarchive marks names as UTF-8 when the locale is. One that is not UTF-8 must stay unmarked, or
/// its bytes could not be read back.
void chooseNameEncoding(const std::string& name) {
    const bool isUtf8 = std::setlocale(LC_CTYPE, "C.UTF-8") &&
                        std::mbstowcs(nullptr, name.c_str(), 0) != static_cast<std::size_t>(-1);
    if (!isUtf8) {
        static_cast<void>(std::setlocale(LC_CTYPE, "C"));
    }
}

ArchiveReader openFolder(const std::string& name) {
    ArchiveReader disk(archive_read_disk_new());
    archive_read_disk_set_symlink_hybrid(disk.get());
    archive_read_disk_set_behavior(disk.get(),
                                   ARCHIVE_READDISK_NO_ACL | ARCHIVE_READDISK_NO_FFLAGS |
                                       ARCHIVE_READDISK_NO_SPARSE | ARCHIVE_READDISK_NO_XATTR);
    require(archive_read_disk_open(disk.get(), name.c_str()) == ARCHIVE_OK, disk.get(), name);
    return disk;
}

void packEntry(archive* disk, archive_entry* entry, archive* zip) {
    const std::string path = archive_entry_pathname(entry);
    // Only the time of the last change is worth its place in the archive.
    archive_entry_unset_atime(entry);
    archive_entry_unset_ctime(entry);
    chooseNameEncoding(path);
    require(archive_write_header(zip, entry) == ARCHIVE_OK, zip, path);
    if (copyContents(disk, zip, path) != archive_entry_size(entry)) {
        throw std::runtime_error(path + ": Became shorter while it was packed");
    }
    require(archive_write_finish_entry(zip) == ARCHIVE_OK, zip, path);
}

/// Packs the folder `name` of the current folder.
void writeZip(const std::string& name, const std::string& path) {
    const ArchiveReader disk = openFolder(name);
    const ArchiveWriter zip(archive_write_new());
    archive_write_set_format_zip(zip.get());
    require(archive_write_open_filename(zip.get(), path.c_str()) == ARCHIVE_OK, zip.get(), path);
    const ArchiveEntry entry(archive_entry_new());
    int status = ARCHIVE_OK;
    while ((status = archive_read_next_header2(disk.get(), entry.get())) == ARCHIVE_OK) {
        packEntry(disk.get(), entry.get(), zip.get());
        archive_read_disk_descend(disk.get());
    }
    require(status == ARCHIVE_EOF, disk.get(), name);
    require(archive_write_close(zip.get()) == ARCHIVE_OK, zip.get(), path);
}

}  // namespace

void pack(const std::string& folder, const std::string& zipPath) {
    const fs::path source = absoluteFolder(folder);
    const fs::path place = fs::absolute(zipPath);
    if (isInside(fs::weakly_canonical(place), fs::canonical(source))) {
        throw std::runtime_error(zipPath + ": Lies inside the folder to pack");
    }
    const fs::path partial = place.string() + ".partial";
    // The entries are named as seen from the folder's parent.
    fs::current_path(source.parent_path());
    try {
        writeZip(source.filename(), partial);
        fs::rename(partial, place);
    } catch (...) {
        std::error_code ignored;
        fs::remove(partial, ignored);
        throw;
    }
}

}  // namespace morvella
