#pragma once

#include <string>
#include <vector>

namespace morvella::cocoa_tests {

/// A folder of its own that takes everything in it away at the end. Its path holds no blanks.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    /// The absolute path of `relative`.
    [[nodiscard]] std::string at(const std::string& relative) const;

    /// Makes a folder or file, and the folders above.
    void addFolder(const std::string& relative) const;
    void addFile(const std::string& relative, const std::string& contents = "") const;

    /// Whether anything is there, a symbolic link that leads nowhere included.
    [[nodiscard]] bool holds(const std::string& relative) const;
    /// A file's contents; "(no file)" if there is none.
    [[nodiscard]] std::string contents(const std::string& relative) const;
    /// Everything below a folder, sorted: a folder's path ends in a slash, a file's contents
    /// follow.
    [[nodiscard]] std::vector<std::string> tree(const std::string& relative) const;

  private:
    std::string path_;
};

/// Runs as the user who may least, as long as it lives. Whoever is not root stays who they are.
class OrdinaryUser {
  public:
    OrdinaryUser();
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

  private:
    bool wasRoot_;
};

/// Names that a careless program stumbles over. All are decomposed, as Foundation hands every name
/// to a Mac's disk and to a child.
const std::vector<std::string>& difficultNames();

}  // namespace morvella::cocoa_tests
