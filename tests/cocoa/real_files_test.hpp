#pragma once

#include <string>
#include <vector>

#include "cocoa/temporary_folder.hpp"
#include "platform/cocoa/files.h"
#include "platform/cocoa/system.h"
#include "support/installer_test.hpp"

namespace morvella::cocoa_tests {

/// Foundation's changes to the disk, with a folder as the Trash: on a Mac the tests must not touch
/// the user's own.
class RedirectedFileChanges : public CocoaFileChanges {
  public:
    bool trashItem(const FileUrl& url, ErrorOut error) override;

    std::string trash;
    /// The paths of the items moved to the Trash.
    std::vector<std::string> trashed;

  private:
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

    /// `text` with "STAGE" for the temporary folder's path.
    [[nodiscard]] std::string shortened(std::string text) const;

    TemporaryFolder folder;
    TemporaryFolder trash;
    CocoaFiles files;
    RedirectedFileChanges changes;
    RedirectedTaskRunner realTasks;
    Platform realPlatform{application, bundles, clock,   controls,  changes,     files,
                          log,         runLoop, folders, realTasks, userDefaults};
    tests::Controller installer{viewController, realPlatform};

    const std::string home = folder.at("home");
    const std::string library = folder.at("home/Music/User Library");
    const FileUrl destination = FileUrl::directory(library + "/Morvella");
};

}  // namespace morvella::cocoa_tests
