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
    /// A symbolic link that leads nowhere: reachable, but nothing exists there.
    bool isDanglingLink = false;
};

/// How a change of the disk ends instead of well.
struct Outcome {
    bool result = false;
    std::optional<Error> error = {};
    bool takesEffect = false;
};

/// A disk made of a map. In the journal a URL that names a directory ends in a slash.
class FakeDisk : public Files, public FileChanges {
  public:
    explicit FakeDisk(Journal& journal) : journal_(journal) {}

    /// Both add the folders above as well.
    void addFolder(const std::string& path);
    void addFile(const std::string& path, const std::string& contents = "");
    /// Takes an item and all below it away.
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
    /// What listing a folder gives; no other folder can be listed.
    std::map<std::string, std::vector<std::string>> listings;
    /// By what the journal says of the change, as in "trashed /x/".
    std::map<std::string, Outcome> outcomes;

  private:
    const DiskItem* find(const std::string& path) const;
    bool change(const std::string& what, ErrorOut error, const std::function<void()>& effect);
    void relocate(const std::string& source, const std::string& target);

    Journal& journal_;
};

/// A standard folder that the system names, or why it does not. It may do both.
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
