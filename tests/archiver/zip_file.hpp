#pragma once

#include <archive_entry.h>
#include <sys/types.h>

#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

namespace morvella {

struct ZipEntry {
    std::string name;
    std::string contents;  ///< A link's target.
    mode_t type = AE_IFREG;
    mode_t permissions = 0644;
    std::time_t modified = 1'000'000'000;
};

inline ZipEntry zipFolder(const std::string& name, mode_t permissions = 0755) {
    return {name, "", AE_IFDIR, permissions};
}
inline ZipEntry zipLink(const std::string& name, const std::string& target) {
    return {name, target, AE_IFLNK, 0777};
}

enum class NameEncoding { utf8, unmarked };

/// Writes a zip of these entries, as they are and in this order, however hostile. Throws when it
/// cannot.
void writeZip(const std::filesystem::path& path, const std::vector<ZipEntry>& entries,
              NameEncoding encoding = NameEncoding::utf8, const std::string& passphrase = "");

/// The names in a zip, where they are marked as plain ASCII or UTF-8.
std::vector<std::string> zipNames(const std::filesystem::path& path);

/// Bytes that no compression makes fewer; the same each time.
std::string incompressible(std::size_t size);

std::string contentsOf(const std::filesystem::path& path);
void writeFile(const std::filesystem::path& path, const std::string& contents);

}  // namespace morvella
