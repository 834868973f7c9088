#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class RemovalTest : public InstallerTest {
  protected:
    const FileUrl folder = FileUrl::directory("/Library/Morvella");
};

TEST_F(RemovalTest, TrashesItemsInOrderAndSkipsMissingOnes) {
    disk.addFile("/Library/Morvella/a");
    disk.addFile("/Library/Morvella/Sources/c d");
    EXPECT_TRUE(controller.removeFilesFromFolder({"Sources/c d", "b", "a"}, folder));
    expectEverything({
        "asked: reachable /Library/Morvella/Sources/c d",
        "file: trashed /Library/Morvella/Sources/c d",
        "asked: reachable /Library/Morvella/b",
        "asked: reachable /Library/Morvella/a",
        "file: trashed /Library/Morvella/a",
    });
}

TEST_F(RemovalTest, TrashesNothingAfterTheFirstFailureButChecksTheRest) {
    for (const char* name : {"a", "b", "c"}) {
        disk.addFile(std::string("/Library/Morvella/") + name);
    }
    refuse("trashed /Library/Morvella/a", "refused");
    EXPECT_FALSE(controller.removeFilesFromFolder({"a", "b", "c"}, folder));
    expectEverything({
        "asked: reachable /Library/Morvella/a",
        "file: trashed /Library/Morvella/a",
        "log: failed to move to trash:file:///Library/Morvella/a",
        "asked: reachable /Library/Morvella/b",
        "asked: reachable /Library/Morvella/c",
    });
}

TEST_F(RemovalTest, FailsWhenOnlyALaterItemFails) {
    disk.addFile("/Library/Morvella/a");
    disk.addFile("/Library/Morvella/b");
    refuse("trashed /Library/Morvella/b", "refused");
    EXPECT_FALSE(controller.removeFilesFromFolder({"a", "b", "missing"}, folder));
    EXPECT_FALSE(disk.holds("/Library/Morvella/a"));
}

TEST_F(RemovalTest, TakesAnAbsolutePathAsIs) {
    disk.addFile("/elsewhere/a");
    EXPECT_TRUE(controller.removeFilesFromFolder({"/elsewhere/a"}, folder));
    expectEffects({"file: trashed /elsewhere/a"});
}

/// Foundation resolves a path against a URL that names no directory in the same way.
TEST_F(RemovalTest, ResolvesAPathBesideAFolderUrlWithoutATrailingSlash) {
    disk.addFile("/Library/a");
    EXPECT_TRUE(controller.removeFilesFromFolder({"a"}, FileUrl::file("/Library/Morvella")));
    expectEffects({"file: trashed /Library/a"});
}

TEST_F(RemovalTest, LogsTheUrlOfAFolderWithATrailingSlash) {
    disk.addFolder("/Library/Morvella/sub/50%20");
    refuse("trashed /Library/Morvella/sub/50%20/", "refused");
    EXPECT_FALSE(controller.removeFilesFromFolder({"sub/50%20"}, folder));
    expectEffects({"file: trashed /Library/Morvella/sub/50%20/",
                   "log: failed to move to trash:file:///Library/Morvella/sub/50%2520/"});
}

}  // namespace

}  // namespace morvella::tests
