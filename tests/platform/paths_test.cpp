#include "platform/paths.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morvella {

namespace {

TEST(PathsTest, AppendingPutsOneSlashBetween) {
    EXPECT_EQ(appendingPathComponent("/a", "b"), "/a/b");
    EXPECT_EQ(appendingPathComponent("/a/", "b"), "/a/b");
    EXPECT_EQ(appendingPathComponent("/a", "/b"), "/a/b");
    EXPECT_EQ(appendingPathComponent("/a//", "//b"), "/a/b");
    EXPECT_EQ(appendingPathComponent("a", "b"), "a/b");
}

TEST(PathsTest, AppendingRemovesExtraAndFinalSlashes) {
    EXPECT_EQ(appendingPathComponent("//a///b", "c//d"), "/a/b/c/d");
    EXPECT_EQ(appendingPathComponent("a//b", ""), "a/b");
    EXPECT_EQ(appendingPathComponent("", "a//b"), "a/b");
    EXPECT_EQ(appendingPathComponent("/a", "b/"), "/a/b");
    EXPECT_EQ(appendingPathComponent("/a", "b//"), "/a/b");
    EXPECT_EQ(appendingPathComponent("/a/", ""), "/a");
    EXPECT_EQ(appendingPathComponent("/a/", "/"), "/a");
}

TEST(PathsTest, AppendingWorksOnTheRootAndOnAnEmptyPath) {
    EXPECT_EQ(appendingPathComponent("/", "b"), "/b");
    EXPECT_EQ(appendingPathComponent("/", "/b"), "/b");
    EXPECT_EQ(appendingPathComponent("/", ""), "/");
    EXPECT_EQ(appendingPathComponent("//", "b"), "/b");
    EXPECT_EQ(appendingPathComponent("", "b"), "b");
    EXPECT_EQ(appendingPathComponent("", "b/"), "b");
    EXPECT_EQ(appendingPathComponent("", "/b"), "/b");
    EXPECT_EQ(appendingPathComponent("", "/"), "/");
    EXPECT_EQ(appendingPathComponent("", ""), "");
}

TEST(PathsTest, AppendingKeepsDotsAndBytes) {
    EXPECT_EQ(appendingPathComponent("/a b/..", "c/d.e"), "/a b/../c/d.e");
    EXPECT_EQ(appendingPathComponent("/u\xCC\x88", "\xC3\xBC"), "/u\xCC\x88/\xC3\xBC");
}

TEST(PathsTest, DeletingRemovesTheLastComponent) {
    EXPECT_EQ(deletingLastPathComponent("/a/b"), "/a");
    EXPECT_EQ(deletingLastPathComponent("/a/b/"), "/a");
    EXPECT_EQ(deletingLastPathComponent("/a//b//"), "/a");
    EXPECT_EQ(deletingLastPathComponent("a/b"), "a");
    EXPECT_EQ(deletingLastPathComponent("/a/b.c"), "/a");
}

TEST(PathsTest, DeletingStopsAtTheRootOrAnEmptyPath) {
    EXPECT_EQ(deletingLastPathComponent("/a"), "/");
    EXPECT_EQ(deletingLastPathComponent("/"), "/");
    EXPECT_EQ(deletingLastPathComponent("//"), "/");
    EXPECT_EQ(deletingLastPathComponent("//a"), "/");
    EXPECT_EQ(deletingLastPathComponent("a"), "");
    EXPECT_EQ(deletingLastPathComponent(""), "");
}

TEST(PathsTest, ExtensionIsWhatFollowsTheLastDotOfTheLastComponent) {
    EXPECT_EQ(pathExtension("/a/b.app"), "app");
    EXPECT_EQ(pathExtension("b.app"), "app");
    EXPECT_EQ(pathExtension("/a/b.app///"), "app");
    EXPECT_EQ(pathExtension("/a/b.tar.gz"), "gz");
    EXPECT_EQ(pathExtension("/Applications/Live 11 Suite.app"), "app");
    EXPECT_EQ(pathExtension("/a..app"), "app");
    EXPECT_EQ(pathExtension("/x.app/y.txt"), "txt");
}

TEST(PathsTest, ExtensionNeedsANameBeforeItsDotAndContainsNoSpace) {
    EXPECT_EQ(pathExtension(""), "");
    EXPECT_EQ(pathExtension("/"), "");
    EXPECT_EQ(pathExtension("app"), "");
    EXPECT_EQ(pathExtension("/a/app"), "");
    EXPECT_EQ(pathExtension("/a.app/b"), "");
    EXPECT_EQ(pathExtension("/a/b."), "");
    EXPECT_EQ(pathExtension("/a.b c"), "");
    EXPECT_EQ(pathExtension("/a.b.c d.app"), "app");
    EXPECT_EQ(pathExtension("/a. app"), "");
    EXPECT_EQ(pathExtension(".app"), "");
    EXPECT_EQ(pathExtension("/a/.app"), "");
    EXPECT_EQ(pathExtension("/a/.b.app"), "app");
}

}  // namespace

}  // namespace morvella
