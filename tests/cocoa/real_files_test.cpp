#include "cocoa/real_files_test.hpp"

#include <cstdlib>
#include <filesystem>

namespace morvella::cocoa_tests {

namespace fs = std::filesystem;

bool RedirectedFileChanges::trashItem(const FileUrl& url, ErrorOut error) {
    if (!moveItem(url, FileUrl::file(trash + "/" + std::to_string(++attempts_)), error)) {
        return false;
    }
    trashed.push_back(url.path());
    return true;
}

std::optional<TaskResult> RedirectedTaskRunner::run(const Command& command) {
    Command redirected = command;
    redirected.launchPath = command.launchPath == "/usr/bin/ditto"
                                ? archiver
                                : "not the archiver: " + command.launchPath;
    return tasks_.run(redirected);
}

namespace {

/// An ordinary user may not reach the clone, so the stand-in is copied; macOS may refuse to run a
/// copy of its own archiver.
std::string reachableArchiver(const TemporaryFolder& folder) {
    const fs::path archiver = DITTO;
    if (archiver.parent_path() == "/usr/bin") {
        return archiver;
    }
    fs::copy_file(archiver, folder.at("ditto"));
    return folder.at("ditto");
}

}  // namespace

RealFilesTest::RealFilesTest() {
    connect(installer);
    realTasks.archiver = reachableArchiver(folder);
    changes.trash = trash.path();
    folder.addFolder("home/Library/Fonts");
    folder.addFolder("home/Documents");
    folder.addFolder("home/Music/User Library");
    folder.addFolder("Applications");
    folder.addFolder("Users/Shared");
    for (const char* font : {"Archivo-Medium.ttf", "OpenSans-Regular.ttf"}) {
        folder.addFile(std::string("Bundle/") + font, font);
        bundles.main->resources[font] = folder.at(std::string("Bundle/") + font);
    }
    folders.home = home;
    folders.applications = {FileUrl::directory(folder.at("Applications"))};
    folders.users.url = FileUrl::directory(folder.at("Users"));
    folders.documents.url = FileUrl::directory(home + "/Documents");
    installer.setUserLibPath(text(library));
    installer.setDestinationURL(std::make_shared<const FileUrl>(destination));
}

void RealFilesTest::makeArchive(const std::string& resource, const std::string& source) {
    const std::string archive = folder.at("Bundle/" + resource);
    fs::remove(archive);
    ASSERT_TRUE(installer.compressFolderAtToZipFilePath(folder.at(source), archive));
    bundles.main->resources[resource] = archive;
}

void RealFilesTest::makePayload() {
    folder.addFile("payload/Morvella/Morvella.app/Contents/Info.plist", "the application");
    folder.addFile("payload/Morvella/Sources/Vellicor.amxd", "the device");
    folder.addFile("payload/Tressimo.app/Contents/Info.plist", "the utility");
    folder.addFile("payload/ISF/Dariwent/a.fs", "shader a");
    folder.addFile("payload/ISF/Standard/b.fs", "shader b");
    makeArchive("morvella.zip", "payload/Morvella");
    makeArchive("Tressimo.zip", "payload/Tressimo.app");
    makeArchive("ISF.zip", "payload/ISF");
    journal.clear();
}

std::string RealFilesTest::shortened(std::string text) const {
    for (size_t at = 0; (at = text.find(folder.path(), at)) != std::string::npos;) {
        text.replace(at, folder.path().size(), "STAGE");
    }
    return text;
}

}  // namespace morvella::cocoa_tests
