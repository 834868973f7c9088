#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/files.hpp"
#include "support/journal.hpp"

namespace morvella::tests {

struct DiskItem {
    bool isFolder = false;
    std::string contents = {};
    bool readable = true;
    bool writable = true;
    /// A dangling symbolic link: reachable, but its target does not exist.
    bool isDanglingLink = false;
};

/// The outcome of a change to the disk that is not a plain success.
struct Outcome {
    bool result = false;
    std::optional<Error> error = {};
    bool takesEffect = false;
};

/// An in-memory disk. In the journal, a URL that names a directory ends in a slash.
class FakeDisk : public Files, public FileChanges {
  public:
    explicit FakeDisk(Journal& journal) : journal_(journal) {}

    /// Both also create missing parent folders.
    void addFolder(const std::string& path);
    void addFile(const std::string& path, const std::string& contents = "");
    /// Removes an item and everything below it.
    void remove(const std::string& path);
    [[nodiscard]] bool holds(const std::string& path) const { return items.contains(path); }

    [[nodiscard]] FileUrl fileUrl(const std::string& path) const override;
    bool isReachable(const FileUrl& url, ErrorOut error) const override;
    [[nodiscard]] bool fileExists(const std::string& path) const override;
    [[nodiscard]] bool isReadable(const std::string& path) const override;
    [[nodiscard]] bool isWritable(const std::string& path) const override;
    [[nodiscard]] std::optional<std::vector<std::string>> contentsOfDirectory(
        const std::string& path) const override;
    [[nodiscard]] std::optional<std::string> contentsOfFile(const std::string& path) const override;

    bool createDirectory(const FileUrl& url, ErrorOut error) override;
    bool copyItem(const FileUrl& source, const FileUrl& target, ErrorOut error) override;
    bool moveItem(const FileUrl& source, const FileUrl& target, ErrorOut error) override;
    bool trashItem(const FileUrl& url, ErrorOut error) override;

    std::map<std::string, DiskItem> items = {{"/", {.isFolder = true}}};
    /// The result of listing each folder; other folders cannot be listed.
    std::map<std::string, std::vector<std::string>> listings;
    /// Keyed by the journal's text for the change, such as "trashed /x/".
    std::map<std::string, Outcome> outcomes;

  private:
    const DiskItem* find(const std::string& path) const;
    bool change(const std::string& what, ErrorOut error, const std::function<void()>& effect);
    void relocate(const std::string& source, const std::string& target);

    Journal& journal_;
};

/// The system's answer for a standard folder: the folder, an error, or both.
struct FolderAnswer {
    std::optional<FileUrl> url = {};
    std::optional<Error> error = {};
};

class FakeStandardFolders : public StandardFolders {
  public:
    explicit FakeStandardFolders(Journal& journal) : journal_(journal) {}
    [[nodiscard]] std::string homeDirectory() const override { return home; }
    [[nodiscard]] std::vector<FileUrl> urls(StandardDirectory directory,
                                            Domain domain) const override;
    std::optional<FileUrl> url(StandardDirectory directory, Domain domain,
                               ErrorOut error) const override;

    std::string home = "/Users/ann";
    std::vector<FileUrl> applications = {FileUrl::directory("/Applications"),
                                         FileUrl::directory("/Network/Applications")};
    FolderAnswer users = {.url = FileUrl::directory("/Users")};
    FolderAnswer documents = {.url = FileUrl::directory("/Users/ann/Documents")};

  private:
    Journal& journal_;
};

}  // namespace morvella::tests
