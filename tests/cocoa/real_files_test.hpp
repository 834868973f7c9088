#pragma once

#include <string>
#include <vector>

#include "cocoa/temporary_folder.hpp"
#include "platform/cocoa/files.h"
#include "platform/cocoa/system.h"
#include "support/installer_test.hpp"

namespace morvella::cocoa_tests {

/// Changes the disk through Foundation, but replaces the Trash with a temporary folder: on a Mac
/// the tests must not touch the user's Trash.
class RedirectedFileChanges : public CocoaFileChanges {
  public:
    bool trashItem(const FileUrl& url, ErrorOut error) override {
        const std::string target = trash_.at(std::to_string(++attempts_));
        const bool isMoved = moveItem(url, FileUrl::file(target), error);
        if (isMoved) {
            trashed.push_back(url.path());
        }
        return isMoved;
    }

    /// The paths of the items moved to the Trash.
    std::vector<std::string> trashed;

  private:
    TemporaryFolder trash_;
    int attempts_ = 0;
};

/// Runs tasks through Foundation, with `DITTO` as the archiver.
class RedirectedTaskRunner : public CocoaTaskRunner {
  public:
    std::optional<TaskResult> run(const Command& command) override {
        EXPECT_EQ(command.launchPath, "/usr/bin/ditto");
        return CocoaTaskRunner::run({DITTO, command.arguments, command.currentDirectoryPath});
    }
};

/// Runs the installer through Foundation on real files in a temporary folder: a home folder "home"
/// with the User Library "Music/User Library", "Applications", "Users/Shared", and the bundle's
/// resources in "Bundle", with small versions of the archives. Everything except files and tasks is
/// faked.
class RealFilesTest : public tests::InstallerTest {
  protected:
    RealFilesTest() {
        connect(installer);
        for (const char* name : {"home/Library/Fonts", "home/Documents", "home/Music/User Library",
                                 "Applications", "Users/Shared"}) {
            folder.addFolder(name);
        }
        for (const std::string font : {"Archivo-Medium.ttf", "OpenSans-Regular.ttf"}) {
            folder.addFile("Bundle/" + font, font);
            bundles.main->resources[font] = folder.at("Bundle/" + font);
        }
        folders.home = home;
        folders.applications = {FileUrl::directory(folder.at("Applications"))};
        folders.users.url = FileUrl::directory(folder.at("Users"));
        folders.documents.url = FileUrl::directory(home + "/Documents");
        installer.setUserLibPath(text(library));
        installer.setDestinationURL(std::make_shared<const FileUrl>(destination));
        folder.addFile("payload/Morvella/Morvella.app/Contents/Info.plist", "the application");
        folder.addFile("payload/Morvella/Sources/Vellicor.amxd", "the device");
        folder.addFile("payload/Tressimo.app/Contents/Info.plist", "the utility");
        folder.addFile("payload/ISF/Dariwent/a.fs", "shader a");
        folder.addFile("payload/ISF/Standard/b.fs", "shader b");
        addArchive("morvella.zip", "payload/Morvella");
        addArchive("Tressimo.zip", "payload/Tressimo.app");
        addArchive("ISF.zip", "payload/ISF");
        journal.clear();
    }

    TemporaryFolder folder;
    CocoaFiles files;
    RedirectedFileChanges changes;
    RedirectedTaskRunner realTasks;
    Platform realPlatform{application, bundles, clock,   controls,  changes,     files,
                          log,         runLoop, folders, realTasks, userDefaults};
    tests::Controller installer{viewController, realPlatform};

    const std::string home = folder.at("home");
    const std::string library = folder.at("home/Music/User Library");
    const FileUrl destination = FileUrl::directory(library + "/Morvella");

  private:
    /// Packs the folder with the real archiver.
    void addArchive(const std::string& resource, const std::string& source) {
        const std::string archive = folder.at("Bundle/" + resource);
        EXPECT_TRUE(installer.compressFolderAtToZipFilePath(folder.at(source), archive));
        bundles.main->resources[resource] = archive;
    }
};

}  // namespace morvella::cocoa_tests
