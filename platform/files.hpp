#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/error.hpp"
#include "platform/file_url.hpp"

namespace morvella {

/// Read-only queries. A path that is empty or contains NUL matches nothing: every query returns no,
/// and every change below fails.
class Files {
  public:
    virtual ~Files() = default;

    /// The URL of `path`; it names a directory if a folder is there now.
    [[nodiscard]] virtual FileUrl fileUrl(const std::string& path) const = 0;

    /// Whether something exists at `url`; a dangling symbolic link counts.
    virtual bool isReachable(const FileUrl& url, ErrorOut error = nullptr) const = 0;

    /// The same for a path.
    [[nodiscard]] bool isReachable(const std::string& path) const {
        return isReachable(fileUrl(path));
    }

    /// Whether something exists at `path`; follows symbolic links.
    [[nodiscard]] virtual bool fileExists(const std::string& path) const = 0;

    [[nodiscard]] virtual bool isReadable(const std::string& path) const = 0;
    [[nodiscard]] virtual bool isWritable(const std::string& path) const = 0;

    /// The names in a folder, unsorted, without "." and ".."; nothing if the folder is missing or
    /// unreadable.
    [[nodiscard]] virtual std::optional<std::vector<std::string>> contentsOfDirectory(
        const std::string& path) const = 0;

    /// The bytes of the whole file; nothing if it is missing, unreadable or a folder.
    [[nodiscard]] virtual std::optional<std::string> contentsOfFile(
        const std::string& path) const = 0;
};

/// Changes to the disk. On failure each returns false and leaves the source in place. Nothing is
/// deleted, with one exception: `copyItem` removes an incomplete copy.
class FileChanges {
  public:
    virtual ~FileChanges() = default;

    /// Creates the folder and any missing parents. Succeeds if the folder already exists.
    virtual bool createDirectory(const FileUrl& url, ErrorOut error) = 0;

    /// Fails if anything is at `target` already, and leaves that alone. A copy that fails later is
    /// kept if it equals the source, as on a volume without extended attributes.
    virtual bool copyItem(const FileUrl& source, const FileUrl& target, ErrorOut error) = 0;

    /// Fails if anything is at `target` already.
    virtual bool moveItem(const FileUrl& source, const FileUrl& target, ErrorOut error) = 0;

    /// Moves a file or folder to the user's Trash.
    virtual bool trashItem(const FileUrl& url, ErrorOut error) = 0;
};

/// The values are Foundation's.
enum class StandardDirectory { applications = 1, users = 7, documents = 9 };
enum class Domain { user = 1, local = 2 };

/// The system's standard folders.
class StandardFolders {
  public:
    virtual ~StandardFolders() = default;

    /// The current user's home folder, an absolute path.
    [[nodiscard]] virtual std::string homeDirectory() const = 0;

    /// All folders of this kind in `domain`, the preferred one first; they need not exist.
    [[nodiscard]] virtual std::vector<FileUrl> urls(StandardDirectory directory,
                                                    Domain domain) const = 0;

    /// The folder of this kind in `domain`, which is not created; nothing on failure.
    virtual std::optional<FileUrl> url(StandardDirectory directory, Domain domain,
                                       ErrorOut error) const = 0;
};

}  // namespace morvella
