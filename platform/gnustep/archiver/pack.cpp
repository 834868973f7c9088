#include "pack.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>

#include "compressibility.hpp"
#include "libarchive.hpp"

namespace morvella {
namespace {

namespace fs = std::filesystem;

constexpr int writeBlockSize = 1 << 18;

std::runtime_error systemError(const fs::path& path) {
    return std::runtime_error(path.string() + ": " + std::generic_category().message(errno));
}

/// A file that stands beside its place under a longer name until it is complete, and goes if it
/// never is.
class PartialFile {
  public:
    explicit PartialFile(const fs::path& place)
        : place_(place),
          name_(place.string() + ".XXXXXX"),
          descriptor_(mkostemp(name_.data(), O_CLOEXEC)) {
        if (descriptor_ < 0) {
            throw systemError(place_);
        }
        const mode_t mask = umask(0);
        umask(mask);
        fchmod(descriptor_, 0666 & ~mask);
    }
    ~PartialFile() {
        if (descriptor_ >= 0) {
            ::close(descriptor_);
        }
        if (!complete_) {
            unlink(name_.c_str());
        }
    }
    PartialFile(const PartialFile&) = delete;
    PartialFile& operator=(const PartialFile&) = delete;

    [[nodiscard]] int descriptor() const { return descriptor_; }

    void putInPlace() {
        const int closed = ::close(std::exchange(descriptor_, -1));
        if (closed != 0 || std::rename(name_.c_str(), place_.c_str()) != 0) {
            throw systemError(place_);
        }
        complete_ = true;
    }

  private:
    fs::path place_;
    std::string name_;
    int descriptor_;
    bool complete_ = false;
};

/// The absolute path of a folder, ending in its name; a link to a folder keeps its own name.
fs::path absoluteFolder(const std::string& folder) {
    std::error_code error;
    if (!fs::is_directory(folder, error)) {
        errno = error ? error.value() : ENOTDIR;
        throw systemError(folder);
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

void require(bool succeeded, archive* source, const std::string& subject) {
    if (!succeeded) {
        throw std::runtime_error(subject + ": " + errorText(source));
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

ArchiveWriter openZip(int descriptor, const std::string& name) {
    ArchiveWriter zip(archive_write_new());
    archive_write_set_format_zip(zip.get());
    archive_write_set_bytes_per_block(zip.get(), writeBlockSize);
    require(archive_write_open_fd(zip.get(), descriptor) == ARCHIVE_OK, zip.get(), name);
    return zip;
}

void packContents(archive* disk, archive* zip, std::int64_t expectedSize, const std::string& path) {
    const void* block = nullptr;
    std::size_t size = 0;
    la_int64_t offset = 0;
    std::int64_t packedSize = 0;
    int status = ARCHIVE_OK;
    while ((status = archive_read_data_block(disk, &block, &size, &offset)) == ARCHIVE_OK) {
        require(archive_write_data(zip, block, size) == static_cast<la_ssize_t>(size), zip, path);
        packedSize += static_cast<std::int64_t>(size);
    }
    require(status == ARCHIVE_EOF, disk, path);
    if (packedSize != expectedSize) {
        throw std::runtime_error(path + ": Became shorter while it was packed");
    }
}

void packEntry(archive* disk, archive_entry* entry, archive* zip) {
    const std::string path = archive_entry_pathname(entry);
    // Only the time of the last change is worth its place in the archive.
    archive_entry_unset_atime(entry);
    archive_entry_unset_ctime(entry);
    chooseNameEncoding(path);
    if (isCompressible(path, archive_entry_size(entry))) {
        archive_write_zip_set_compression_deflate(zip);
    } else {
        archive_write_zip_set_compression_store(zip);
    }
    require(archive_write_header(zip, entry) == ARCHIVE_OK, zip, path);
    packContents(disk, zip, archive_entry_size(entry), path);
    require(archive_write_finish_entry(zip) == ARCHIVE_OK, zip, path);
}

}  // namespace

void pack(const std::string& folder, const std::string& zipPath) {
    const fs::path source = absoluteFolder(folder);
    const fs::path place = fs::absolute(zipPath);
    if (isInside(fs::weakly_canonical(place), fs::canonical(source))) {
        throw std::runtime_error(zipPath + ": Lies inside the folder to pack");
    }
    PartialFile file(place);
    // The entries are named as seen from the folder's parent.
    fs::current_path(source.parent_path());
    const std::string name = source.filename();
    const ArchiveReader disk = openFolder(name);
    const ArchiveWriter zip = openZip(file.descriptor(), zipPath);
    const ArchiveEntry entry(archive_entry_new());
    int status = ARCHIVE_OK;
    while ((status = archive_read_next_header2(disk.get(), entry.get())) == ARCHIVE_OK) {
        packEntry(disk.get(), entry.get(), zip.get());
        archive_read_disk_descend(disk.get());
    }
    require(status == ARCHIVE_EOF, disk.get(), name);
    require(archive_write_close(zip.get()) == ARCHIVE_OK, zip.get(), zipPath);
    file.putInPlace();
}

}  // namespace morvella
