#pragma once

#include <string>
#include <string_view>

namespace morvella {

/// A file URL as a plain value: a path, and whether it names a directory. The path is UTF-8 and
/// kept byte for byte. Nothing here looks at a disk; `Files::fileUrl` does.
class FileUrl {
  public:
    /// The path of something that is not a folder.
    static FileUrl file(std::string_view path);

    /// The path of a folder, whether or not the folder exists yet.
    static FileUrl directory(std::string_view path);

    /// `path` resolved against `base`: a relative path goes below a base that names a directory,
    /// and beside one that does not. An absolute path ignores the base.
    static FileUrl fileRelativeTo(std::string_view path, const FileUrl& base);
    static FileUrl directoryRelativeTo(std::string_view path, const FileUrl& base);

    /// The path without the slash that marks a directory.
    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] bool namesDirectory() const { return namesDirectory_; }

    /// The URL's text: "file://", the percent-encoded path, and a final slash for a directory.
    [[nodiscard]] std::string absoluteString() const;

    bool operator==(const FileUrl&) const = default;

  private:
    FileUrl(std::string path, bool namesDirectory);

    std::string path_;
    bool namesDirectory_;
};

}  // namespace morvella
