#pragma once

#include "platform/files.hpp"

namespace morvella {

class CocoaFiles : public Files {
  public:
    [[nodiscard]] FileUrl fileUrl(const std::string& path) const override;
    bool isReachable(const FileUrl& url, ErrorOut error) const override;
    [[nodiscard]] bool fileExists(const std::string& path) const override;
    [[nodiscard]] bool isReadable(const std::string& path) const override;
    [[nodiscard]] bool isWritable(const std::string& path) const override;
    [[nodiscard]] std::optional<std::vector<std::string>> contentsOfDirectory(
        const std::string& path) const override;
    [[nodiscard]] std::optional<std::string> contentsOfFile(const std::string& path) const override;
};

class CocoaFileChanges : public FileChanges {
  public:
    bool createDirectory(const FileUrl& url, ErrorOut error) override;
    bool copyItem(const FileUrl& source, const FileUrl& target, ErrorOut error) override;
    bool moveItem(const FileUrl& source, const FileUrl& target, ErrorOut error) override;
    bool trashItem(const FileUrl& url, ErrorOut error) override;
};

class CocoaStandardFolders : public StandardFolders {
  public:
    [[nodiscard]] std::string homeDirectory() const override;
    [[nodiscard]] std::vector<FileUrl> urls(StandardDirectory directory,
                                            Domain domain) const override;
    std::optional<FileUrl> url(StandardDirectory directory, Domain domain,
                               ErrorOut error) const override;
};

}  // namespace morvella
