#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class VerificationTest : public InstallerTest {
  protected:
    const FileUrl destination = FileUrl::directory("/UL/Morvella");
    const std::string move = "moved /UL/Morvella/Morvella.app/ to /UL/Morvella/.Morvella.app";
    const std::string hides = "file: " + move;
};

TEST_F(VerificationTest, HidesTheApplication) {
    disk.addFolder("/UL/Morvella/Morvella.app/Contents");
    EXPECT_TRUE(controller.hideApp(destination));
    expectEverything({
        "log: Hiding the morvella.app to declutter the user library browser...",
        "asked: reachable /UL/Morvella/Morvella.app/",
        "asked: reachable /UL/Morvella/.Morvella.app",
        "file: moved /UL/Morvella/Morvella.app/ to /UL/Morvella/.Morvella.app",
        "asked: reachable /UL/Morvella/.Morvella.app, and why not",
    });
    EXPECT_TRUE(disk.holds("/UL/Morvella/.Morvella.app/Contents"));
    EXPECT_FALSE(disk.holds("/UL/Morvella/Morvella.app"));
}

TEST_F(VerificationTest, HidingFailsSilentlyWithoutTheApplication) {
    disk.addFolder("/UL/Morvella/.Morvella.app");
    EXPECT_FALSE(controller.hideApp(destination));
    expectEverything({hidingLine, "asked: reachable /UL/Morvella/Morvella.app"});
    EXPECT_TRUE(disk.holds("/UL/Morvella/.Morvella.app"));
}

TEST_F(VerificationTest, HidingMovesAnOlderHiddenCopyToTheTrash) {
    disk.addFile("/UL/Morvella/Morvella.app/new");
    disk.addFile("/UL/Morvella/.Morvella.app/old");
    EXPECT_TRUE(controller.hideApp(destination));
    expectEffects({
        hidingLine,
        "log: App already exists at destination, deleting.",
        "file: trashed /UL/Morvella/.Morvella.app/",
        "file: moved /UL/Morvella/Morvella.app/ to /UL/Morvella/.Morvella.app/",
    });
    EXPECT_TRUE(disk.holds("/UL/Morvella/.Morvella.app/new"));
    EXPECT_FALSE(disk.holds("/UL/Morvella/.Morvella.app/old"));
}

TEST_F(VerificationTest, HidingFailsWhenTheOlderCopyCannotBeTrashed) {
    disk.addFile("/UL/Morvella/Morvella.app/new");
    disk.addFile("/UL/Morvella/.Morvella.app/old");
    refuse("trashed /UL/Morvella/.Morvella.app/", "refused");
    EXPECT_FALSE(controller.hideApp(destination));
    expectEffects({
        hidingLine,
        "log: App already exists at destination, deleting.",
        "file: trashed /UL/Morvella/.Morvella.app/",
        "log: failed to move to trash:file:///UL/Morvella/.Morvella.app/",
        "log: Couldn't move older copy of the hidden app to trash, aborting.",
    });
    EXPECT_TRUE(disk.holds("/UL/Morvella/Morvella.app/new"));
    EXPECT_TRUE(disk.holds("/UL/Morvella/.Morvella.app/old"));
}

TEST_F(VerificationTest, HidingFailsAndLogsTheErrorOfTheRename) {
    disk.addFolder("/UL/Morvella/Morvella.app");
    refuse(move, "read-only");
    EXPECT_FALSE(controller.hideApp(destination));
    expectEffects({
        hidingLine,
        hides,
        "log: Couldn't hide the app file, error:read-only",
    });
    EXPECT_TRUE(disk.holds("/UL/Morvella/Morvella.app"));
}

TEST_F(VerificationTest, OnlyTheErrorDecidesWhetherTheRenameFailed) {
    disk.addFolder("/UL/Morvella/Morvella.app");
    disk.outcomes[move] = {.result = true, .error = Error{"odd"}, .takesEffect = true};
    EXPECT_FALSE(controller.hideApp(destination));
    EXPECT_EQ(journal.only({Kind::log}),
              lines({hidingLine, "log: Couldn't hide the app file, error:odd"}));
}

TEST_F(VerificationTest, ARenameWithoutAnErrorSucceedsIfItTookEffect) {
    disk.addFolder("/UL/Morvella/Morvella.app");
    disk.outcomes[move] = {.takesEffect = true};
    EXPECT_TRUE(controller.hideApp(destination));
}

TEST_F(VerificationTest, HidingFailsWhenTheHiddenApplicationIsMissingAfterwards) {
    disk.addFolder("/UL/Morvella/Morvella.app");
    disk.outcomes[move] = {.result = true};
    EXPECT_FALSE(controller.hideApp(destination));
    expectEffects({
        hidingLine,
        hides,
        "log: Hidden app not found at destination url, error:nothing at "
        "/UL/Morvella/.Morvella.app",
    });
}

TEST_F(VerificationTest, PassesWithTheHiddenApplicationAndTheDevice) {
    disk.addFolder("/UL/Morvella/.Morvella.app");
    EXPECT_FALSE(controller.checkInstall(destination));
    disk.addFile("/UL/Morvella/Sources/Vellicor.amxd");
    journal.clear();
    EXPECT_TRUE(controller.checkInstall(destination));
    expectEverything({
        "asked: reachable /UL/Morvella/.Morvella.app/",
        "asked: reachable /UL/Morvella/Sources/Vellicor.amxd",
    });
}

TEST_F(VerificationTest, FailsIfTheApplicationIsVisibleAndSkipsTheDevice) {
    disk.addFolder("/UL/Morvella/Morvella.app");
    disk.addFile("/UL/Morvella/Sources/Vellicor.amxd");
    EXPECT_FALSE(controller.checkInstall(destination));
    expectEverything({"asked: reachable /UL/Morvella/.Morvella.app"});
}

}  // namespace

}  // namespace morvella::tests
