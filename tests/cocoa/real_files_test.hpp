#pragma once

#include <set>
#include <string>
#include <vector>

#include "cocoa/temporary_folder.hpp"
#include "platform/cocoa/files.h"
#include "platform/cocoa/system.h"
#include "support/installer_test.hpp"

namespace morvella::cocoa_tests {

/// Foundation's changes of the disk, of which any one operation can be made to fail. What goes to
/// the Trash goes to a folder in its place: on a Mac nothing moves the user's own Trash.
class FailingFileChanges : public FileChanges {
  public:
    bool createDirectory(const FileUrl& url, ErrorOut error) override;
    bool copyItem(const FileUrl& source, const FileUrl& target, ErrorOut error) override;
    bool moveItem(const FileUrl& source, const FileUrl& target, ErrorOut error) override;
    bool trashItem(const FileUrl& url, ErrorOut error) override;

    /// Of "create", "copy", "move" and "trash", with the path that is made, read or trashed: "trash
    /// /x".
    std::set<std::string> failing;

    /// The folder in the Trash's place, and the paths of what went there.
    std::string trash;
    std::vector<std::string> trashed;

  private:
    /// Whether this operation fails; writes the error "made to fail" then.
    bool fails(const std::string& operation, const FileUrl& url, ErrorOut error) const;

    CocoaFileChanges changes_;
    /// Each item has a name of its own in the folder.
    int attempts_ = 0;
};

/// Foundation's tasks, with another program in the archiver's place.
class RedirectedTaskRunner : public TaskRunner {
  public:
    std::optional<TaskResult> run(const Command& command) override;

    std::string archiver;

  private:
    CocoaTaskRunner tasks_;
};

/// The installer on the real files of a temporary folder, through Foundation: a home folder "home",
/// the User Library "Music/User Library" in it, "Applications", "Users/Shared", and the bundle's
/// resources in "Bundle". Everything that is not a file is faked.
class RealFilesTest : public fakes::InstallerTest {
  protected:
    RealFilesTest();

    /// Packs what is in the temporary folder at `source` with the real archiver and makes it the
    /// bundle's resource of that name. The folder itself is the archive's top level.
    void makeArchive(const std::string& resource, const std::string& source);

    /// Makes the three archives, small ones of the right shape.
    void makePayload();

    /// Puts a script in the archiver's place. Its arguments and working directory are kept, one
    /// each line, in the file "recorded"; then it does `line` of shell.
    void recordArchiver(const std::string& line);

    /// The log's lines, with "STAGE" for the temporary folder's path.
    [[nodiscard]] std::string logged() const;
    [[nodiscard]] std::string shortened(std::string text) const;

    TemporaryFolder folder;
    CocoaFiles files;
    FailingFileChanges changes;
    RedirectedTaskRunner realTasks;
    Platform realPlatform{application, bundles, clock,   controls,  changes,      files,    log,
                          richText,    runLoop, folders, realTasks, userDefaults, workspace};
    fakes::Controller installer{viewController, realPlatform};

    /// The folder in the Trash's place.
    TemporaryFolder trash;
    const std::string home = folder.at("home");
    const std::string library = folder.at("home/Music/User Library");
    const FileUrl destination = FileUrl::directory(library + "/Morvella");
};

}  // namespace morvella::cocoa_tests
