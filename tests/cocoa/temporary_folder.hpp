#pragma once

#include <string>
#include <vector>

namespace morvella::cocoa_tests {

/// A new folder, which the destructor deletes with everything in it.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    /// The absolute path of `relative`.
    [[nodiscard]] std::string at(const std::string& relative) const {
        return path_ + "/" + relative;
    }

    /// Both also create missing parents.
    void addFolder(const std::string& relative) const;
    void addFile(const std::string& relative, const std::string& contents = "") const;

    /// Whether anything exists at `relative`; a dangling symbolic link counts.
    [[nodiscard]] bool holds(const std::string& relative) const;
    /// A file's contents; "(no file)" if there is none.
    [[nodiscard]] std::string contents(const std::string& relative) const;
    /// Everything in a folder, sorted: "folder/" and "file: contents".
    [[nodiscard]] std::vector<std::string> tree(const std::string& relative) const;

  private:
    std::string path_;
};

/// Makes root an ordinary user during its lifetime; does nothing for other users.
class OrdinaryUser {
  public:
    OrdinaryUser();
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

  private:
    bool wasRoot_;
};

/// File names that break careless code, in decomposed Unicode: Foundation on macOS passes names to
/// the disk and to child processes in that form.
std::vector<std::string> difficultNames();

}  // namespace morvella::cocoa_tests
