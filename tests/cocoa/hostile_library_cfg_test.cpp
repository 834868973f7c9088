#include <algorithm>
#include <filesystem>

#include "cocoa/real_files_test.hpp"

namespace morvella::cocoa_tests {

namespace {

namespace fs = std::filesystem;

using Paths = std::vector<std::string>;

/// The way from a `Library.cfg` that may say anything to the end of an installation, on real files:
/// what goes to the Trash, and whether everything else that is the user's is still there.
class HostileLibraryCfgTest : public RealFilesTest {
  protected:
    HostileLibraryCfgTest() {
        makePayload();
        for (const std::string& file : treasures) {
            folder.addFile(file, "kept: " + file);
        }
        folder.addFile("home/Music/User Library/Morvella/.Morvella.app/old", "old");
        folder.addFile("Applications/Morvella/old", "old");
        bundles.add(liveApplication).information["CFBundleVersion"] = "11.3.4 (2023-06-01)";
    }

    /// Looks the User Library up, goes through the installation page, and answers every sheet with
    /// its first button. Returns what was handed to the Trash, in its order.
    Paths run(const std::string& parent, const std::string& name) {
        folder.addFile("home/Library/Preferences/Ableton/Live 11.3.4/Library.cfg",
                       "<UserLibrary>\n<ProjectName Value=\"" + name +
                           "\" />\n<ProjectPath Value=\"" + parent + "\" />\n</UserLibrary>\n");
        EXPECT_TRUE(installer.setUserLibUsingLiveApp(text(liveApplication)));
        clock.stamp = "backup " + std::to_string(++runs_);
        installer.doInstallViewAppeared();
        answerSheets();
        runLoop.drainMainQueue();
        answerSheets();
        return trashed();
    }

    void answerSheets() {
        while (window->sheetsWaiting() > 0) {
            window->answer(1000, ControlState::on);
        }
    }

    Paths trashed() const {
        Paths items;
        for (const std::string& item : changes.trashed) {
            items.push_back(shortened(item));
        }
        return items;
    }

    ~HostileLibraryCfgTest() override {
        for (const std::string& file : treasures) {
            EXPECT_EQ(folder.contents(file), "kept: " + file);
        }
    }

    const std::string liveApplication = folder.at("Live 11.app");
    const std::string music = folder.at("home/Music");
    const std::string utility = "STAGE/Applications/Morvella";
    const Paths treasures = {"home/Music/User Library/Presets/mine.adv",
                             "home/Music/User Library/Morvella Backup/mine.adv",
                             "home/Music/Projects/song.als",
                             "home/Documents/letter",
                             "home/Documents/ISF/Dariwent/mine.fs",
                             "home/.Morvella.app/mine",
                             "Applications/Live.app/executable",
                             "Users/Shared/other/file",
                             "Morvella.txt"};

  private:
    int runs_ = 0;
};

TEST_F(HostileLibraryCfgTest, AnHonestOneLosesNothingButTheInstallation) {
    EXPECT_EQ(run(music, "User Library"),
              (Paths{"STAGE/home/Music/User Library/Morvella", utility}));
    EXPECT_TRUE(installer.checkInstall(destination));
}

TEST_F(HostileLibraryCfgTest, APathWithANulNamesNothing) {
    const std::string nul(1, '\0');
    const std::vector<std::pair<std::string, std::string>> values = {
        {music, "User Library" + nul + "x"},
        {music, "User Library" + nul},
        {music, "User Library/Morvella" + nul},
        {music + nul + "x", "User Library"},
        {music + "/User Library/" + nul, ""},
        {folder.path() + nul, nul},
        {nul, nul}};
    const auto before = folder.tree("home/Music");
    for (const auto& [parent, name] : values) {
        changes.trashed.clear();
        folder.addFolder("Applications/Morvella");
        EXPECT_EQ(run(parent, name), Paths{utility});
        EXPECT_EQ(textOf(installer.userLibPath()),
                  parent + (parent.ends_with('/') ? "" : "/") + name);
        EXPECT_EQ(viewController.shown, initialView);
    }
    EXPECT_EQ(folder.tree("home/Music"), before);
}

TEST_F(HostileLibraryCfgTest, EveryOtherWayToTheUserLibraryLeadsToItsInstallation) {
    fs::create_directory_symlink("User Library", music + "/link");
    const std::vector<std::pair<std::string, std::string>> values = {
        {music, "User Library//"},
        {music + "///", "User Library"},
        {music, "./User Library"},
        {music + "/User Library", ""},
        {music, "link"},
        {music + "/User Library", "."},
        {music + "/Projects", "../User Library"}};
    for (const auto& [parent, name] : values) {
        changes.trashed.clear();
        folder.addFile("home/Music/User Library/Morvella/old", "old");
        folder.addFolder("Applications/Morvella");
        const Paths items = run(parent, name);
        ASSERT_EQ(items.size(), 2U) << parent << " and " << name;
        EXPECT_EQ(fs::path(changes.trashed[0]).lexically_normal().filename(), "Morvella");
        EXPECT_EQ(items[1], utility);
        EXPECT_FALSE(folder.holds("home/Music/User Library/Morvella/old"));
        EXPECT_TRUE(installer.checkInstall(destination));
    }
}

TEST_F(HostileLibraryCfgTest, AUserLibraryAboveTheOneOfLiveIsTakenAtItsWord) {
    folder.addFile("home/Music/Morvella/old", "old");
    EXPECT_EQ(run(music + "/User Library", ".."),
              (Paths{"STAGE/home/Music/User Library/../Morvella", utility}));
    EXPECT_EQ(folder.contents("home/Music/User Library/Morvella/.Morvella.app/old"), "old");
}

TEST_F(HostileLibraryCfgTest, ALinkInTheProductsPlaceGoesAloneToTheTrash) {
    fs::remove_all(destination.path());
    fs::create_directory_symlink(music + "/Projects", destination.path());
    EXPECT_EQ(run(music, "User Library"),
              (Paths{"STAGE/home/Music/User Library/Morvella", utility}));
}

/// Nothing is unpacked: the archiver that stands in does nothing, because this is no temporary
/// folder.
TEST_F(HostileLibraryCfgTest, TheRootIsNoInstallation) {
    ASSERT_FALSE(fs::exists("/Morvella"));
    recordArchiver("");
    for (const char* parent : {"", "/", "//", "/.", "/.."}) {
        changes.trashed.clear();
        folder.addFolder("Applications/Morvella");
        EXPECT_EQ(run(parent, ""), Paths{utility});
    }
}

/// A disk may take both names for one or for two; either way nothing but "Morvella" is touched.
TEST_F(HostileLibraryCfgTest, ANameInAnotherNormalFormIsTheSameFolderOrNone) {
    folder.addFile(
        "home/Music/B\xC3\xBC"
        "cher/Morvella/old",
        "old");
    folder.addFile(
        "home/Music/B\xC3\xBC"
        "cher/mine",
        "mine");
    const Paths items = run(music,
                            "Bu\xCC\x88"
                            "cher");
    EXPECT_EQ(items.back(), utility);
    EXPECT_TRUE(items.size() == 1 || items[0] ==
                                         "STAGE/home/Music/Bu\xCC\x88"
                                         "cher/Morvella");
    EXPECT_EQ(folder.contents("home/Music/B\xC3\xBC"
                              "cher/mine"),
              "mine");
}

TEST_F(HostileLibraryCfgTest, WhatFailsOnTheWayTakesNothingElse) {
    changes.failing = {"trash " + destination.path(),
                       "create " + folder.at("Users/Shared/Morvella")};
    folder.addFile("home/Documents/Morvella/ISF/Dariwent/old.fs", "old");
    folder.addFile("home/Documents/Morvella/ISF/Standard/old.fs", "old");
    folder.addFile("home/Documents/Morvella/ISF/Mine/mine.fs", "mine");
    EXPECT_EQ(run(music, "User Library"),
              (Paths{utility, "STAGE/home/Documents/Morvella/ISF/Dariwent",
                     "STAGE/home/Documents/Morvella/ISF/Standard",
                     "STAGE/home/Music/User Library/Morvella/.Morvella.app"}));
    EXPECT_EQ(folder.contents("home/Documents/Morvella/ISF/Mine/mine.fs"), "mine");
}

}  // namespace

}  // namespace morvella::cocoa_tests
