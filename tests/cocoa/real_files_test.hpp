#pragma once

#include <set>
#include <string>
#include <vector>

#include "cocoa/temporary_folder.hpp"
#include "platform/cocoa/files.h"
#include "platform/cocoa/system.h"
#include "support/installer_test.hpp"

namespace morvella::cocoa_tests {

/// Foundation's changes to the disk; any one of them can be made to fail. Items go to a folder
/// instead of the Trash: on a Mac the tests must not touch the user's own.
class FailingFileChanges : public FileChanges {
  public:
    bool createDirectory(const FileUrl& url, ErrorOut error) override;
    bool copyItem(const FileUrl& source, const FileUrl& target, ErrorOut error) override;
    bool moveItem(const FileUrl& source, const FileUrl& target, ErrorOut error) override;
    bool trashItem(const FileUrl& url, ErrorOut error) override;

    /// "create", "copy", "move" or "trash" and the path that is made, read or trashed: "trash /x".
    std::set<std::string> failing;

    /// The folder used as the Trash, and the paths of the items moved to it.
    std::string trash;
    std::vector<std::string> trashed;

  private:
    /// Whether this operation is to fail; sets the error "made to fail" if so.
    bool fails(const std::string& operation, const FileUrl& url, ErrorOut error) const;

    CocoaFileChanges changes_;
    int attempts_ = 0;
};

/// Foundation's tasks, with another program instead of the archiver.
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
class RealFilesTest : public tests::InstallerTest {
  protected:
    RealFilesTest();

    /// Packs the folder `source` of the temporary folder with the real archiver and makes the
    /// archive the bundle's resource of that name.
    void makeArchive(const std::string& resource, const std::string& source);

    /// Makes small versions of the three archives.
    void makePayload();

    /// The log's lines, with "STAGE" for the temporary folder's path.
    [[nodiscard]] std::string logged() const;
    [[nodiscard]] std::string shortened(std::string text) const;

    TemporaryFolder folder;
    TemporaryFolder trash;
    CocoaFiles files;
    FailingFileChanges changes;
    RedirectedTaskRunner realTasks;
    Platform realPlatform{application, bundles, clock,   controls,  changes,     files,
                          log,         runLoop, folders, realTasks, userDefaults};
    tests::Controller installer{viewController, realPlatform};

    const std::string home = folder.at("home");
    const std::string library = folder.at("home/Music/User Library");
    const FileUrl destination = FileUrl::directory(library + "/Morvella");
};

}  // namespace morvella::cocoa_tests
