#include "platform/cocoa/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <utility>

#include "cocoa/temporary_folder.hpp"

namespace morvella::cocoa_tests {

namespace {

namespace fs = std::filesystem;

using Tree = std::vector<std::string>;

class FilesTest : public ::testing::Test {
  protected:
    [[nodiscard]] FileUrl file(const std::string& relative) const {
        return FileUrl::file(folder.at(relative));
    }
    [[nodiscard]] FileUrl directory(const std::string& relative) const {
        return FileUrl::directory(folder.at(relative));
    }

    void expectFailed(bool result) {
        EXPECT_FALSE(result);
        EXPECT_NE(std::exchange(error, {}).value_or(Error{}).description, "");
    }
    void expectSucceeded(bool result) {
        EXPECT_TRUE(result);
        EXPECT_EQ(error, std::nullopt) << error->description;
    }

    TemporaryFolder folder;
    CocoaFiles files;
    CocoaFileChanges changes;
    std::optional<Error> error;
};

TEST_F(FilesTest, KnowsWhatExists) {
    folder.addFile("a/file");
    fs::create_symlink("a", folder.at("link"));
    fs::create_symlink("nowhere", folder.at("dangling"));
    for (const char* name : {"a", "a/file", "link"}) {
        EXPECT_TRUE(files.isReachable(file(name), nullptr)) << name;
        EXPECT_TRUE(files.fileExists(folder.at(name))) << name;
    }
    EXPECT_EQ(files.fileUrl(folder.at("a")), directory("a"));
    EXPECT_EQ(files.fileUrl(folder.at("a/file")), file("a/file"));
    EXPECT_EQ(files.fileUrl(folder.at("missing")), file("missing"));
    EXPECT_TRUE(files.isReachable(file("dangling"), nullptr));
    EXPECT_FALSE(files.fileExists(folder.at("dangling")));
    expectFailed(files.isReachable(file("missing"), &error));
    EXPECT_FALSE(files.fileExists(folder.at("missing")));
}

TEST_F(FilesTest, KnowsWhatIsReadableAndWritable) {
    folder.addFolder("folder");
    for (const auto mode : {fs::perms(0000), fs::perms(0333), fs::perms(0555), fs::perms(0777)}) {
        fs::permissions(folder.at("folder"), mode);
        const OrdinaryUser user;
        EXPECT_EQ(files.isReadable(folder.at("folder")),
                  (mode & fs::perms::others_read) != fs::perms::none);
        EXPECT_EQ(files.isWritable(folder.at("folder")),
                  (mode & fs::perms::others_write) != fs::perms::none);
    }
    EXPECT_FALSE(files.isReadable(folder.at("missing")));
    EXPECT_FALSE(files.isWritable(folder.at("missing")));
}

TEST_F(FilesTest, ListsEveryNameInAFolder) {
    Tree names = difficultNames();
    for (const std::string& name : names) {
        folder.addFolder("list/" + name);
    }
    auto listed = files.contentsOfDirectory(folder.at("list"));
    ASSERT_TRUE(listed.has_value());
    std::sort(listed->begin(), listed->end());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(*listed, names);
    EXPECT_EQ(files.contentsOfDirectory(folder.at("list/-x/")), Tree());
    EXPECT_EQ(files.contentsOfDirectory(folder.at("missing")), std::nullopt);
    folder.addFile("file");
    EXPECT_EQ(files.contentsOfDirectory(folder.at("file")), std::nullopt);
}

TEST_F(FilesTest, ReadsWholeFiles) {
    const std::string contents = std::string("\0\xFF\n", 3) + std::string(100000, 'x');
    folder.addFile("file", contents);
    folder.addFile("empty");
    folder.addFile("closed", "secret");
    fs::permissions(folder.at("closed"), fs::perms::none);
    EXPECT_EQ(files.contentsOfFile(folder.at("file")), contents);
    EXPECT_EQ(files.contentsOfFile(folder.at("empty")), "");
    EXPECT_EQ(files.contentsOfFile(folder.at("missing")), std::nullopt);
    EXPECT_EQ(files.contentsOfFile(folder.path()), std::nullopt);
    const OrdinaryUser user;
    EXPECT_EQ(files.contentsOfFile(folder.at("closed")), std::nullopt);
}

TEST_F(FilesTest, EmptyAndInvalidPathsMatchNothing) {
    folder.addFile("folder/file", "kept");
    const std::string nul(1, '\0');
    const fs::path before = fs::current_path();
    fs::current_path(folder.at("folder"));
    for (const std::string& path : {folder.at("folder") + nul, folder.at("folder" + nul + "x"),
                                    folder.at("\xFF"), nul, std::string()}) {
        const FileUrl url = FileUrl::directory(path);
        EXPECT_EQ(files.fileUrl(path), FileUrl::file(path));
        EXPECT_FALSE(files.fileExists(path));
        EXPECT_FALSE(files.isReadable(path));
        EXPECT_FALSE(files.isWritable(path));
        EXPECT_EQ(files.contentsOfDirectory(path), std::nullopt);
        EXPECT_EQ(files.contentsOfFile(path), std::nullopt);
        expectFailed(files.isReachable(url, &error));
        expectFailed(changes.createDirectory(url, &error));
        expectFailed(changes.copyItem(url, file("copy"), &error));
        expectFailed(changes.copyItem(file("folder/file"), url, &error));
        expectFailed(changes.moveItem(url, file("moved"), &error));
        expectFailed(changes.moveItem(file("folder/file"), url, &error));
        expectFailed(changes.trashItem(url, &error));
    }
    fs::current_path(before);
    EXPECT_EQ(folder.tree(""), (Tree{"folder/", "folder/file: kept"}));
}

TEST_F(FilesTest, CreatesAFolderWithItsParents) {
    const mode_t before = umask(0027);
    expectSucceeded(changes.createDirectory(directory("a/b"), &error));
    umask(before);
    folder.addFile("a/b/file", "kept");
    expectSucceeded(changes.createDirectory(directory("a/b"), &error));
    expectFailed(changes.createDirectory(directory("a/b/file"), &error));
    expectFailed(changes.createDirectory(directory("a/b/file/below"), &error));
    EXPECT_EQ(folder.tree("a"), (Tree{"b/", "b/file: kept"}));
    EXPECT_EQ(fs::status(folder.at("a")).permissions(), fs::perms(0750));
    EXPECT_EQ(fs::status(folder.at("a/b")).permissions(), fs::perms(0750));
}

TEST_F(FilesTest, CopiesAndMovesUnderAnyName) {
    for (const std::string& name : difficultNames()) {
        const std::string copy = "copy of " + name;
        const std::string moved = "moved " + name;
        folder.addFile(name + "/a/file", "text");
        expectSucceeded(changes.copyItem(directory(name), directory(copy), &error));
        EXPECT_EQ(folder.tree(name), folder.tree(copy));
        expectSucceeded(changes.moveItem(directory(copy), file(moved), &error));
        EXPECT_EQ(folder.tree(moved), (Tree{"a/", "a/file: text"}));
        EXPECT_FALSE(folder.holds(copy));
    }
}

TEST_F(FilesTest, NeverCopiesOrMovesOntoAnExistingItem) {
    folder.addFile("from/file", "new");
    folder.addFile("file", "old");
    folder.addFile("folder/inner", "old");
    folder.addFolder("empty");
    fs::create_symlink("nowhere", folder.at("dangling"));
    for (const char* target : {"file", "folder", "empty", "dangling"}) {
        expectFailed(changes.copyItem(file("from/file"), file(target), &error));
        expectFailed(changes.copyItem(directory("from"), file(target), &error));
        expectFailed(changes.moveItem(directory("from"), file(target), &error));
    }
    EXPECT_EQ(folder.tree(""), (Tree{"dangling: (no file)", "empty/", "file: old", "folder/",
                                     "folder/inner: old", "from/", "from/file: new"}));
}

TEST_F(FilesTest, FailsWithoutASourceOrWritePermission) {
    folder.addFile("closed/file", "kept");
    folder.addFile("from", "text");
    fs::permissions(folder.at("closed"), fs::perms(0555));
    fs::permissions(folder.at("from"), fs::perms(0666));
    expectFailed(changes.copyItem(file("missing"), file("to"), &error));
    expectFailed(changes.moveItem(file("missing"), file("to"), &error));
    expectFailed(changes.trashItem(file("missing"), &error));
    const OrdinaryUser user;
    expectFailed(changes.createDirectory(directory("closed/new"), &error));
    expectFailed(changes.copyItem(file("from"), file("closed/copy"), &error));
    expectFailed(changes.moveItem(file("from"), file("closed/moved"), &error));
    expectFailed(changes.moveItem(file("closed/file"), file("closed/other"), &error));
    expectFailed(changes.trashItem(file("closed/file"), &error));
    EXPECT_EQ(folder.tree(""), (Tree{"closed/", "closed/file: kept", "from: text"}));
}

}  // namespace

}  // namespace morvella::cocoa_tests
