#include "platform/cocoa/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

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

    /// Expects a failure that says why.
    void expectFailed(bool result) {
        EXPECT_FALSE(result);
        ASSERT_TRUE(error.has_value());
        EXPECT_NE(error->description, "");
        error.reset();
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

TEST_F(FilesTest, UrlNamesADirectoryWhereAFolderIs) {
    folder.addFile("a/file");
    EXPECT_EQ(files.fileUrl(folder.at("a")), directory("a"));
    EXPECT_EQ(files.fileUrl(folder.at("a/file")), file("a/file"));
    EXPECT_EQ(files.fileUrl(folder.at("missing")), file("missing"));
}

TEST_F(FilesTest, ReachesWhatIsThere) {
    folder.addFile("a/file");
    fs::create_symlink("nowhere", folder.at("dangling"));
    EXPECT_TRUE(files.isReachable(directory("a"), nullptr));
    EXPECT_TRUE(files.isReachable(file("a/file"), nullptr));
    EXPECT_TRUE(files.isReachable(file("dangling"), nullptr));
    EXPECT_FALSE(files.isReachable(file("missing"), nullptr));
    EXPECT_FALSE(files.isReachable(FileUrl::directory(""), nullptr));
}

TEST_F(FilesTest, SaysWhyItDoesNotReach) {
    expectFailed(files.isReachable(file("missing"), &error));
    folder.addFile("there");
    error = Error{"earlier"};
    EXPECT_TRUE(files.isReachable(file("there"), &error));
    EXPECT_EQ(error, Error{"earlier"});
}

TEST_F(FilesTest, WhatALinkLeadsToExists) {
    folder.addFile("a/file");
    fs::create_symlink("a", folder.at("link"));
    fs::create_symlink("nowhere", folder.at("dangling"));
    EXPECT_TRUE(files.fileExists(folder.at("a")));
    EXPECT_TRUE(files.fileExists(folder.at("link")));
    EXPECT_FALSE(files.fileExists(folder.at("dangling")));
    EXPECT_FALSE(files.fileExists(folder.at("missing")));
}

TEST_F(FilesTest, KnowsWhatMayBeReadAndWritten) {
    folder.addFolder("closed");
    folder.addFolder("open");
    fs::permissions(folder.at("closed"), fs::perms::none);
    fs::permissions(folder.at("open"), fs::perms::all);
    const OrdinaryUser user;
    EXPECT_FALSE(files.isReadable(folder.at("closed")));
    EXPECT_FALSE(files.isWritable(folder.at("closed")));
    EXPECT_TRUE(files.isReadable(folder.at("open")));
    EXPECT_TRUE(files.isWritable(folder.at("open")));
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
}

TEST_F(FilesTest, ListsNothingThatIsNoReadableFolder) {
    folder.addFile("file");
    folder.addFolder("empty");
    folder.addFolder("closed");
    fs::permissions(folder.at("closed"), fs::perms::none);
    EXPECT_EQ(files.contentsOfDirectory(folder.at("missing")), std::nullopt);
    EXPECT_EQ(files.contentsOfDirectory(folder.at("file")), std::nullopt);
    EXPECT_EQ(files.contentsOfDirectory(folder.at("empty")), Tree());
    EXPECT_EQ(files.contentsOfDirectory(folder.at("empty/")), Tree());
    // An empty list, which is all that GNUstep gives for a closed folder, says as much to the
    // caller.
    const OrdinaryUser user;
    EXPECT_EQ(files.contentsOfDirectory(folder.at("closed")).value_or(Tree()), Tree());
}

TEST_F(FilesTest, ReadsAWholeFile) {
    const std::string contents = std::string("\0\xFF\n", 3) + std::string(100000, 'x');
    folder.addFile("file", contents);
    folder.addFile("empty");
    EXPECT_EQ(files.contentsOfFile(folder.at("file")), contents);
    EXPECT_EQ(files.contentsOfFile(folder.at("empty")), "");
}

TEST_F(FilesTest, APathThatHoldsANulOrNothingNamesNothing) {
    folder.addFile("folder/file", "kept");
    const std::string nul(1, '\0');
    const fs::path before = fs::current_path();
    fs::current_path(folder.at("folder"));
    for (const std::string& path :
         {folder.at("folder") + nul, folder.at("folder" + nul + "x"), nul, std::string()}) {
        const FileUrl url = FileUrl::directory(path);
        EXPECT_EQ(files.fileUrl(path), FileUrl::file(path));
        EXPECT_FALSE(files.fileExists(path));
        EXPECT_FALSE(files.isReadable(path));
        EXPECT_FALSE(files.isWritable(path));
        EXPECT_EQ(files.contentsOfDirectory(path), std::nullopt);
        EXPECT_EQ(files.contentsOfFile(path), std::nullopt);
        expectFailed(CocoaFiles().isReachable(url, &error));
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

TEST_F(FilesTest, ReadsNothingThatIsNoReadableFile) {
    folder.addFolder("folder");
    folder.addFile("closed", "secret");
    fs::permissions(folder.at("closed"), fs::perms::none);
    EXPECT_EQ(files.contentsOfFile(folder.at("missing")), std::nullopt);
    EXPECT_EQ(files.contentsOfFile(folder.at("folder")), std::nullopt);
    const OrdinaryUser user;
    EXPECT_EQ(files.contentsOfFile(folder.at("closed")), std::nullopt);
}

TEST_F(FilesTest, MakesAFolderWithThoseAboveAndLeavesAnExistingOneAlone) {
    expectSucceeded(changes.createDirectory(directory("a/b/c"), &error));
    folder.addFile("a/b/c/file", "kept");
    expectSucceeded(changes.createDirectory(directory("a/b/c"), &error));
    EXPECT_EQ(folder.tree("a"), (Tree{"b/", "b/c/", "b/c/file: kept"}));
}

TEST_F(FilesTest, MakesNoFolderWhereAFileIs) {
    folder.addFile("file", "kept");
    expectFailed(changes.createDirectory(directory("file"), &error));
    expectFailed(changes.createDirectory(directory("file/below"), &error));
    EXPECT_EQ(folder.contents("file"), "kept");
}

TEST_F(FilesTest, CopiesFilesAndFolders) {
    folder.addFile("from/a/file", "text");
    expectSucceeded(changes.copyItem(directory("from"), directory("to"), &error));
    expectSucceeded(changes.copyItem(file("from/a/file"), file("copy"), &error));
    EXPECT_EQ(folder.tree("to"), (Tree{"a/", "a/file: text"}));
    EXPECT_EQ(folder.contents("copy"), "text");
    EXPECT_EQ(folder.contents("from/a/file"), "text");
}

TEST_F(FilesTest, MovesFilesAndFolders) {
    folder.addFile("from/a/file", "text");
    expectSucceeded(changes.moveItem(directory("from"), file("to"), &error));
    EXPECT_FALSE(folder.holds("from"));
    EXPECT_EQ(folder.tree("to"), (Tree{"a/", "a/file: text"}));
}

TEST_F(FilesTest, NeitherCopiesNorMovesOntoAnything) {
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
    EXPECT_EQ(folder.contents("from/file"), "new");
    EXPECT_EQ(folder.contents("file"), "old");
    EXPECT_EQ(folder.tree("folder"), Tree{"inner: old"});
    EXPECT_EQ(folder.tree("empty"), Tree());
    EXPECT_FALSE(folder.holds("nowhere"));
}

TEST_F(FilesTest, FailsWithWhatIsMissing) {
    expectFailed(changes.copyItem(file("missing"), file("to"), &error));
    expectFailed(changes.moveItem(file("missing"), file("to"), &error));
    expectFailed(changes.trashItem(file("missing"), &error));
    EXPECT_EQ(folder.tree(""), Tree());
}

TEST_F(FilesTest, FailsWhereNothingMayBeWritten) {
    folder.addFile("closed/file", "kept");
    folder.addFile("from", "text");
    fs::permissions(folder.at("from"), fs::perms::all);
    {
        const OrdinaryUser user;
        expectFailed(changes.createDirectory(directory("closed/new"), &error));
        expectFailed(changes.copyItem(file("from"), file("closed/copy"), &error));
        expectFailed(changes.moveItem(file("from"), file("closed/moved"), &error));
        expectFailed(changes.moveItem(file("closed/file"), file("closed/other"), &error));
        expectFailed(changes.trashItem(file("closed/file"), &error));
    }
    EXPECT_EQ(folder.tree(""), (Tree{"closed/", "closed/file: kept", "from: text"}));
}

TEST_F(FilesTest, LeavesAnEarlierErrorAloneOnSuccess) {
    error = Error{"earlier"};
    folder.addFile("file");
    EXPECT_TRUE(changes.createDirectory(directory("new"), &error));
    EXPECT_TRUE(changes.copyItem(file("file"), file("copy"), &error));
    EXPECT_TRUE(changes.moveItem(file("copy"), file("moved"), &error));
    EXPECT_EQ(error, Error{"earlier"});
}

TEST_F(FilesTest, WorksWithDifficultNames) {
    for (const std::string& name : difficultNames()) {
        const std::string copy = "copy of " + name;
        const std::string moved = "moved " + name;
        expectSucceeded(changes.createDirectory(directory(name), &error));
        folder.addFile(name + "/file", "text");
        expectSucceeded(changes.copyItem(directory(name), directory(copy), &error));
        expectSucceeded(changes.moveItem(directory(copy), file(moved), &error));
        EXPECT_EQ(folder.tree(name), Tree{"file: text"});
        EXPECT_EQ(folder.tree(moved), Tree{"file: text"});
        EXPECT_FALSE(folder.holds(copy));
        EXPECT_TRUE(files.isReachable(file(moved), nullptr));
    }
}

}  // namespace

}  // namespace morvella::cocoa_tests
