#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class TrashTest : public InstallerTest {};

TEST_F(TrashTest, ReceivesAnItemWithoutALogLine) {
    disk.addFile("/UL/a b");
    EXPECT_TRUE(controller.moveToTrash(FileUrl::file("/UL/a b")));
    expectEverything({"file: trashed /UL/a b"});
    EXPECT_FALSE(disk.holds("/UL/a b"));
}

TEST_F(TrashTest, FailureIsLoggedWithTheUrlAndNotWithTheError) {
    disk.outcomes["trashed /UL/a b/"] = {.error = Error{"refused"}};
    EXPECT_FALSE(controller.moveToTrash(FileUrl::directory("/UL/a b")));
    expectEverything({
        "file: trashed /UL/a b/",
        "log: failed to move to trash:file:///UL/a%20b/",
    });
}

TEST_F(TrashTest, FailureDependsOnTheResultAndNotOnTheError) {
    disk.outcomes["trashed /odd"] = {.result = true, .error = Error{"odd"}};
    EXPECT_TRUE(controller.moveToTrash(FileUrl::file("/odd")));
    expectEffects({"file: trashed /odd"});
    disk.outcomes["trashed /odd"] = {.result = false, .error = std::nullopt};
    EXPECT_FALSE(controller.moveToTrash(FileUrl::file("/odd")));
    expectEffects({"file: trashed /odd", "log: failed to move to trash:file:///odd"});
}

}  // namespace

}  // namespace morvella::tests
