#include "live/get_live_user_lib.hpp"
#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class PreferenceFolderTest : public ::testing::Test, protected FakePlatform {
  protected:
    /// The latest of `entries`, if they are in the preferences folder of "/home/x".
    std::string latestOf(const std::vector<std::string>& entries) {
        const std::string root = "/home/x/Library/Preferences/Ableton/";
        disk.listings[root] = entries;
        const auto folder = lookup.getLatestPreferenceFolderUsingHomeDirectory("/home/x");
        EXPECT_TRUE(!folder || folder->starts_with(root)) << *folder;
        return folder ? folder->substr(root.size()) : "(nothing)";
    }

    getLiveUserLib lookup{platform};
};

TEST_F(PreferenceFolderTest, BelongsToTheLatestVersion) {
    EXPECT_EQ(latestOf({"Live 9.7.7", "Live 10.1.30", "Live 10.1.9", "Live 11.0"}), "Live 11.0");
    EXPECT_EQ(latestOf({"Live 11.0", "Live 10.1.9", "Live 10.1.30", "Live 9.7.7"}), "Live 11.0");
    EXPECT_EQ(latestOf({"Live 12 beta", "Live 11.3.4"}), "Live 12 beta");
    EXPECT_EQ(latestOf({"Live 10.2.0", "Live 10.1.9"}), "Live 10.2.0");
    EXPECT_EQ(latestOf({"Live 10.1.9", "Live 10.2.0"}), "Live 10.2.0");
    EXPECT_EQ(latestOf({"Live 10.1.9", "Live 10.1.30"}), "Live 10.1.30");
    EXPECT_EQ(latestOf({"Live 10.1.30", "Live 10.1.9"}), "Live 10.1.30");
    EXPECT_EQ(latestOf({"Live Beta", "Live 9"}), "Live 9");
}

TEST_F(PreferenceFolderTest, IsTheFirstListedOfEqualVersions) {
    EXPECT_EQ(latestOf({"Live 10.1", "Live 10.1.0"}), "Live 10.1");
    EXPECT_EQ(latestOf({"Live 10.1.0", "Live 10.1"}), "Live 10.1.0");
    EXPECT_EQ(latestOf({"Live 11.0b12", "Live 11.0"}), "Live 11.0b12");
}

TEST_F(PreferenceFolderTest, KeepsTheNameAsListed) {
    EXPECT_EQ(latestOf({"Live 10.1.30.7"}), "Live 10.1.30.7");
    EXPECT_EQ(latestOf({"Live Beta"}), "Live Beta");
    EXPECT_EQ(latestOf({"Live Live 9.1"}), "Live Live 9.1");
    EXPECT_EQ(latestOf({"Live "}), "Live ");
}

TEST_F(PreferenceFolderTest, MayHaveANegativeVersionDownToAFixedLimit) {
    EXPECT_EQ(latestOf({"Live -1"}), "Live -1");
    EXPECT_EQ(latestOf({"Live -1", "Live 0"}), "Live 0");
    EXPECT_EQ(latestOf({"Live -2"}), "(nothing)");
    EXPECT_EQ(latestOf({"Live -1.-1"}), "Live -1.-1");
    EXPECT_EQ(latestOf({"Live -1.-1.-1"}), "(nothing)");
}

TEST_F(PreferenceFolderTest, MustBeginWithThePrefix) {
    EXPECT_EQ(latestOf({"Live", "LiveSet", "Preferences.cfg"}), "(nothing)");
    EXPECT_EQ(latestOf({"live 10.0", "LIVE 10.0", " Live 10.0", "My Live 10.0", "Live\t10"}),
              "(nothing)");
    EXPECT_EQ(latestOf({"Live 9.0", "live 10.0"}), "Live 9.0");
    EXPECT_EQ(latestOf({"live 10.0", "Live 9.0"}), "Live 9.0");
}

TEST_F(PreferenceFolderTest, IsNotOpened) {
    latestOf({"Live 10.1", "Live 11.0"});
    EXPECT_EQ(journal.everything(),
              lines({"asked: entries of /home/x/Library/Preferences/Ableton/"}));
}

TEST_F(PreferenceFolderTest, IsNotFoundWithoutEntriesOrWithoutTheirFolder) {
    EXPECT_EQ(latestOf({}), "(nothing)");
    EXPECT_EQ(lookup.getLatestPreferenceFolderUsingHomeDirectory("/home/y"), std::nullopt);
    EXPECT_EQ(journal.effects(), "");
}

TEST_F(PreferenceFolderTest, IsLookedUpInTheCurrentUsersHome) {
    disk.listings["/Users/ann/Library/Preferences/Ableton/"] = {"Live 10.1", "Live 11.0"};
    EXPECT_EQ(lookup.getLatestPreferenceFolder(),
              "/Users/ann/Library/Preferences/Ableton/Live 11.0");
    folders.home = "/Users/bob";
    EXPECT_EQ(lookup.getLatestPreferenceFolder(), std::nullopt);
}

TEST_F(PreferenceFolderTest, ForAGivenVersionIsNotCheckedForExistence) {
    EXPECT_EQ(lookup.getPreferenceFolderUsingVersionIdentifier("10.1.30"),
              "/Users/ann/Library/Preferences/Ableton/Live 10.1.30");
    EXPECT_EQ(lookup.getPreferenceFolderUsingVersionIdentifier(""),
              "/Users/ann/Library/Preferences/Ableton/Live ");
    EXPECT_EQ(journal.everything(), "");
}

}  // namespace

}  // namespace morvella::tests
