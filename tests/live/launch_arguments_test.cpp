#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class LaunchArgumentsTest : public InstallerTest {};

TEST_F(LaunchArgumentsTest, LiveApplicationIsTakenAsIsEvenIfEmpty) {
    launchWith("liveapp", "not even a path %@");
    EXPECT_TRUE(controller.setLiveAppURLFromArgs());
    EXPECT_EQ(textOf(controller.liveAppPath()), "not even a path %@");
    expectEverything({
        "asked: NSArgumentDomain, object for key liveapp",
        "log: using live app found at not even a path %@",
    });
    launchWith("liveapp", "");
    EXPECT_TRUE(controller.setLiveAppURLFromArgs());
    EXPECT_EQ(textOf(controller.liveAppPath()), "");
    expectEffects({"log: using live app found at "});
}

TEST_F(LaunchArgumentsTest, MissingLiveApplicationChangesNothing) {
    launchWith("app", "/Kit/");
    controller.setLiveAppPath(text("/before.app"));
    EXPECT_FALSE(controller.setLiveAppURLFromArgs());
    EXPECT_EQ(textOf(controller.liveAppPath()), "/before.app");
    expectEverything({"asked: NSArgumentDomain, object for key liveapp"});
}

/// The argument should end in a slash; none is added if it does not.
TEST_F(LaunchArgumentsTest, DemoSetPathBeginsWithTheGivenFolder) {
    launchWith("app", "/Kit/");
    EXPECT_TRUE(controller.setDemoSetURLFromArgs());
    EXPECT_EQ(textOf(controller.demoSetPath()), demoSet);
    expectEverything({
        "asked: NSArgumentDomain, object for key app",
        "log: will open demo set at /Kit/Morvella Basic Demo Project/Morvella Basic Demo.als",
    });
    launchWith("app", "/Kit");
    EXPECT_TRUE(controller.setDemoSetURLFromArgs());
    EXPECT_EQ(textOf(controller.demoSetPath()),
              "/KitMorvella Basic Demo Project/Morvella Basic Demo.als");
}

TEST_F(LaunchArgumentsTest, MissingDemoSetChangesNothing) {
    launchWith("liveapp", "/Live.app");
    controller.setDemoSetPath(text("/before.als"));
    EXPECT_FALSE(controller.setDemoSetURLFromArgs());
    EXPECT_EQ(textOf(controller.demoSetPath()), "/before.als");
    expectEverything({"asked: NSArgumentDomain, object for key app"});
}

}  // namespace

}  // namespace morvella::tests
