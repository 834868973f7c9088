#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class LiveApplicationTest : public InstallerTest {
  protected:
    void expectFound(const std::string& liveApplication) {
        controller.setUserLibPath(nullptr);
        EXPECT_TRUE(controller.setUserLibUsingLiveApp(text(liveApplication))) << liveApplication;
        EXPECT_EQ(textOf(controller.userLibPath()), "/Users/ann/Music/User Library");
        expectEffects({"control: User Library label says \"/Users/ann/Music/User Library\""});
    }

    void expectNotFound(const std::string& liveApplication) {
        controller.setUserLibPath(text("/before"));
        EXPECT_FALSE(controller.setUserLibUsingLiveApp(text(liveApplication))) << liveApplication;
        EXPECT_EQ(controller.userLibPath(), nullptr);
        expectEffects({"control: User Library label says \"Not found\"",
                       "log: couldn't get usrlib info, status:1"});
    }
};

TEST_F(LiveApplicationTest, DeterminesTheUserLibrary) {
    installLive("/Applications/Live 10 Suite.app", "10.1.30 (2020-12-01)", "10.1.30");
    disk.addFolder("/Users/ann/Music/User Library");
    EXPECT_TRUE(controller.setUserLibUsingLiveApp(
        text("/Applications/Live 10 Suite.app/Contents/MacOS/Live")));
    EXPECT_EQ(textOf(controller.userLibPath()), "/Users/ann/Music/User Library");
    expectEverything({
        "asked: bundle at /Applications/Live 10 Suite.app/",
        "asked: information CFBundleVersion",
        "asked: reachable /Users/ann/Library/Preferences/Ableton/Live 10.1.30/Library.cfg",
        "asked: contents of /Users/ann/Library/Preferences/Ableton/Live 10.1.30/Library.cfg",
        "asked: reachable /Users/ann/Music/User Library/",
        "control: User Library label says \"/Users/ann/Music/User Library\"",
    });
}

TEST_F(LiveApplicationTest, VersionEndsAtTheFirstSpace) {
    installLive("/Live.app", "11.0 b 12", "11.0");
    expectFound("/Live.app");
    installLive("/Live.app", "12.1", "12.1");
    expectFound("/Live.app");
    installLive("/Live.app", " 12.1", "");
    expectFound("/Live.app");
    installLive("/Live.app", "12.1\t(x)", "12.1\t(x)");
    expectFound("/Live.app");
}

TEST_F(LiveApplicationTest, BundleIsTheFirstPartOfThePathWithTheExtension) {
    installLive("/b.app", "11.0", "11.0");
    expectFound("/b.app/Contents/MacOS/Live");
    expectFound("/a/Contents/MacOS/Live/b.app/Contents/MacOS/Live/c.app");
    expectFound("/a.App/Contents/MacOS/Live/b.app");
    expectFound("/b.app/Contents/MacOS/Live 11");
    expectNotFound("/c.app/Contents/MacOS/Live/b.app");
}

TEST_F(LiveApplicationTest, ExtensionMustBeExactlyApp) {
    installLive("/unused.app", "11.0", "11.0");
    for (const char* path :
         {"/Live.APP", "/Live.apps", "/Live.ap", "/Live", "/.app", "/Live.app/x"}) {
        bundles.add(path).information["CFBundleVersion"] = "11.0";
        expectNotFound(path);
    }
}

TEST_F(LiveApplicationTest, IsNotOpenedWithoutABundleInItsPath) {
    EXPECT_FALSE(controller.setUserLibUsingLiveApp(text("/usr/bin/Live")));
    expectEverything({
        "asked: reachable /Users/ann/Library/Preferences/Ableton/Live (null)/Library.cfg",
        "control: User Library label says \"Not found\"",
        "log: couldn't get usrlib info, status:1",
    });
}

TEST_F(LiveApplicationTest, HasNoUserLibraryWithoutABundleOrVersion) {
    expectNotFound("/No.app");
    bundles.add("/Live.app");
    expectNotFound("/Live.app");
}

TEST_F(LiveApplicationTest, LogsStatus4WithoutAUserLibraryEntry) {
    installLive("/Live.app", "11.0", "11.0");
    disk.addFile("/Users/ann/Library/Preferences/Ableton/Live 11.0/Library.cfg", "nothing here");
    controller.setUserLibPath(text("/before"));
    EXPECT_FALSE(controller.setUserLibUsingLiveApp(text("/Live.app")));
    EXPECT_EQ(controller.userLibPath(), nullptr);
    expectEffects({"control: User Library label says \"Not found\"",
                   "log: couldn't get usrlib info, status:4"});
}

TEST_F(LiveApplicationTest, PathOfFewerThanTwoCharactersChangesNothing) {
    controller.setUserLibPath(text("/before"));
    for (const auto& path : {text(""), text("/"), text("\xC3\xBC"), text("\xE2\x82\xAC"),
                             std::shared_ptr<const std::string>()}) {
        EXPECT_FALSE(controller.setUserLibUsingLiveApp(path));
        EXPECT_EQ(textOf(controller.userLibPath()), "/before");
        expectEverything({"log: Couldn't get executable"});
    }
}

TEST_F(LiveApplicationTest, PathOfTwoCharactersIsUsed) {
    expectNotFound("//");
    // Lengths are in UTF-16 units, and a character outside the BMP has two.
    expectNotFound("\xF0\x9F\x8E\xB9");
}

TEST_F(LiveApplicationTest, UserLibraryIsShownBeforeItIsStored) {
    installLive("/Live.app", "11.0", "11.0");
    controller.setUserLibPath(text("/before"));
    std::string stored;
    journal.watcher = [&](const std::string& line) {
        stored = line.starts_with("control: ") ? textOf(controller.userLibPath()) : stored;
    };
    EXPECT_TRUE(controller.setUserLibUsingLiveApp(text("/Live.app")));
    EXPECT_EQ(stored, "/before");
}

TEST_F(LiveApplicationTest, MissingUserLibraryIsShownThenClearedThenLogged) {
    controller.setUserLibPath(text("/before"));
    std::string states;
    journal.watcher = [&](const std::string& line) {
        const bool asked = line.starts_with("asked: ");
        states +=
            asked ? ""
                  : line.substr(0, line.find(':') + 1) + textOf(controller.userLibPath()) + "\n";
    };
    EXPECT_FALSE(controller.setUserLibUsingLiveApp(text("/Live.app")));
    EXPECT_EQ(states, lines({"control:/before", "log:(nothing)"}));
}

TEST_F(LiveApplicationTest, IsTheOnePassedNotTheOneStored) {
    installLive("/Live.app", "11.0", "11.0");
    controller.setLiveAppPath(text("/Other.app"));
    expectFound("/Live.app");
    EXPECT_EQ(textOf(controller.liveAppPath()), "/Other.app");
}

TEST_F(LiveApplicationTest, DemoSetCheckBoxIsShownTickedOrHidden) {
    controller.enableOpenDemoSetUI(true);
    EXPECT_EQ(openDemoSetCheck->currentState, ControlState::on);
    expectEverything(
        {"control: check box enabled", "control: check box shown", "control: check box on"});
    controller.enableOpenDemoSetUI(false);
    EXPECT_EQ(openDemoSetCheck->currentState, ControlState::off);
    expectEverything(
        {"control: check box disabled", "control: check box hidden", "control: check box off"});
}

}  // namespace

}  // namespace morvella::tests
