#include <filesystem>

#include "cocoa/real_files_test.hpp"

namespace morvella::cocoa_tests {

namespace {

namespace fs = std::filesystem;

using Paths = std::vector<std::string>;

/// Installs with a hostile `Library.cfg`: tests what goes to the Trash and that all other files
/// stay in place.
class HostileLibraryCfgTest : public RealFilesTest {
  protected:
    HostileLibraryCfgTest() {
        for (const std::string& file : keptFiles) {
            folder.addFile(file, "kept: " + file);
        }
        folder.addFile("home/Music/User Library/Morvella/.Morvella.app/old", "old");
        bundles.add(liveApplication).information["CFBundleVersion"] = "11.3.4 (2023-06-01)";
    }

    ~HostileLibraryCfgTest() override {
        for (const std::string& file : keptFiles) {
            EXPECT_EQ(folder.contents(file), "kept: " + file);
        }
    }

    /// Finds the User Library, installs, and answers every sheet with its first button. Returns
    /// the paths moved to the Trash, in order, without the old utility's.
    Paths run(const std::string& parent, const std::string& name) {
        changes.trashed.clear();
        folder.addFolder("Applications/Morvella");
        folder.addFile("home/Library/Preferences/Ableton/Live 11.3.4/Library.cfg",
                       "<UserLibrary>\n<ProjectName Value=\"" + name +
                           "\" />\n<ProjectPath Value=\"" + parent + "\" />\n</UserLibrary>\n");
        EXPECT_TRUE(installer.setUserLibUsingLiveApp(text(liveApplication)));
        clock.stamp = "backup " + std::to_string(++runs_);
        installer.doInstallViewAppeared();
        answerSheets();
        runLoop.drainMainQueue();
        answerSheets();
        EXPECT_EQ(std::erase(changes.trashed, folder.at("Applications/Morvella")), 1U);
        return changes.trashed;
    }

    void answerSheets() {
        while (window->sheetsWaiting() > 0) {
            window->answer(1000, ControlState::on);
        }
    }

    const std::string liveApplication = folder.at("Live 11.app");
    const std::string music = folder.at("home/Music");
    const Paths keptFiles = {"home/Music/User Library/Presets/mine.adv",
                             "home/Music/User Library/Morvella Backup/mine.adv",
                             "home/Music/Projects/song.als",
                             "home/Documents/ISF/Dariwent/mine.fs",
                             "home/.Morvella.app/mine",
                             "Applications/Live.app/executable",
                             "Users/Shared/other/file",
                             "Morvella.txt"};

  private:
    int runs_ = 0;
};

TEST_F(HostileLibraryCfgTest, PathsWithNulMatchNothing) {
    const std::string nul(1, '\0');
    const auto before = folder.tree("home/Music");
    for (const auto& [parent, name] :
         {std::pair(music, "User Library" + nul + "x"),
          std::pair(music, "User Library/Morvella" + nul),
          std::pair(music + nul + "x", std::string("User Library")),
          std::pair(music + "/User Library/" + nul, std::string()), std::pair(nul, nul)}) {
        EXPECT_EQ(run(parent, name), Paths());
        EXPECT_EQ(textOf(installer.userLibPath()),
                  parent + (parent.ends_with('/') ? "" : "/") + name);
        EXPECT_EQ(viewController.shown, initialView);
    }
    EXPECT_EQ(folder.tree("home/Music"), before);
}

TEST_F(HostileLibraryCfgTest, EverySpellingOfThePathInstallsInTheSameFolder) {
    fs::create_directory_symlink("User Library", music + "/link");
    const std::vector<std::pair<std::string, std::string>> spellings = {
        {music, "User Library"},
        {music, "User Library//"},
        {music + "///", "./User Library"},
        {music + "/User Library", ""},
        {music, "link"},
        {music + "/User Library", "."},
        {music + "/Projects", "../User Library"}};
    for (const auto& [parent, name] : spellings) {
        folder.addFile("home/Music/User Library/Morvella/old", "old");
        const Paths items = run(parent, name);
        ASSERT_EQ(items.size(), 1U) << parent << " and " << name;
        EXPECT_EQ(fs::path(items[0]).filename(), "Morvella");
        EXPECT_FALSE(folder.holds("home/Music/User Library/Morvella/old"));
        EXPECT_TRUE(installer.checkInstall(destination));
    }
}

TEST_F(HostileLibraryCfgTest, FolderAboveTheUserLibraryIsUsedAsWritten) {
    folder.addFile("home/Music/Morvella/old", "old");
    EXPECT_EQ(run(music + "/User Library", ".."), Paths{library + "/../Morvella"});
    EXPECT_EQ(folder.contents("home/Music/User Library/Morvella/.Morvella.app/old"), "old");
}

}  // namespace

}  // namespace morvella::cocoa_tests
