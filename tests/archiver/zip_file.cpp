#include "zip_file.hpp"

#include <archive.h>

#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>

namespace morvella {
namespace {

using Handle = std::unique_ptr<archive, int (*)(archive*)>;
using EntryHandle = std::unique_ptr<archive_entry, void (*)(archive_entry*)>;

void require(bool succeeded, const Handle& handle) {
    if (!succeeded) {
        throw std::runtime_error(archive_error_string(handle.get()));
    }
}

/// libarchive takes the locale's encoding for the names'.
class Locale {
  public:
    explicit Locale(const char* name) { set(name); }
    ~Locale() { set("C"); }
    Locale(const Locale&) = delete;
    Locale& operator=(const Locale&) = delete;

  private:
    static void set(const char* name) {
        if (!std::setlocale(LC_CTYPE, name)) {
            std::abort();
        }
    }
};

}  // namespace

void writeZip(const std::filesystem::path& path, const std::vector<ZipEntry>& entries,
              NameEncoding encoding, const std::string& passphrase) {
    const Locale locale(encoding == NameEncoding::utf8 ? "C.UTF-8" : "C");
    const Handle zip(archive_write_new(), archive_write_free);
    archive_write_set_format_zip(zip.get());
    if (!passphrase.empty()) {
        require(archive_write_set_options(zip.get(), "zip:encryption=traditional") == ARCHIVE_OK,
                zip);
        archive_write_set_passphrase(zip.get(), passphrase.c_str());
    }
    require(archive_write_open_filename(zip.get(), path.c_str()) == ARCHIVE_OK, zip);
    for (const ZipEntry& each : entries) {
        const EntryHandle entry(archive_entry_new(), archive_entry_free);
        archive_entry_set_pathname(entry.get(), each.name.c_str());
        archive_entry_set_filetype(entry.get(), each.type);
        archive_entry_set_perm(entry.get(), each.permissions);
        archive_entry_set_mtime(entry.get(), each.modified, 0);
        if (each.type == AE_IFLNK) {
            archive_entry_set_symlink(entry.get(), each.contents.c_str());
        } else {
            archive_entry_set_size(entry.get(), static_cast<la_int64_t>(each.contents.size()));
        }
        require(archive_write_header(zip.get(), entry.get()) == ARCHIVE_OK, zip);
        if (each.type == AE_IFREG) {
            require(archive_write_data(zip.get(), each.contents.data(), each.contents.size()) >= 0,
                    zip);
        }
    }
    require(archive_write_close(zip.get()) == ARCHIVE_OK, zip);
}

std::vector<std::string> zipNames(const std::filesystem::path& path) {
    const Locale locale("C.UTF-8");
    const Handle zip(archive_read_new(), archive_read_free);
    archive_read_support_format_zip_seekable(zip.get());
    require(archive_read_open_filename(zip.get(), path.c_str(), 65536) == ARCHIVE_OK, zip);
    std::vector<std::string> names;
    archive_entry* entry = nullptr;
    int status = ARCHIVE_OK;
    while ((status = archive_read_next_header(zip.get(), &entry)) == ARCHIVE_OK) {
        names.push_back(archive_entry_pathname(entry));
    }
    require(status == ARCHIVE_EOF, zip);
    return names;
}

std::string incompressible(std::size_t size) {
    std::string bytes(size, '\0');
    std::uint64_t state = 1;
    for (char& byte : bytes) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        byte = static_cast<char>(state >> 56U);
    }
    return bytes;
}

std::string contentsOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const std::filesystem::path& path, const std::string& contents) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file << contents;
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

}  // namespace morvella
