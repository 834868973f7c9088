#include "live/get_live_user_lib.hpp"
#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class UserLibraryTest : public ::testing::Test, protected FakePlatform {
  protected:
    /// Looks up the User Library in "/Prefs" and keeps the status.
    std::string lookUp() {
        status = -7;
        const auto path = getLiveUserLib(platform).getUserLibraryErrorInt("/Prefs", &status);
        return path.value_or("(nothing)");
    }

    void writeCfg(const std::string& parent, const std::string& name) {
        disk.addFile("/Prefs/Library.cfg", "<UserLibrary>\n<ProjectName Value=\"" + name +
                                               "\">\n<ProjectPath Value=\"" + parent +
                                               "\">\n</UserLibrary>\n");
    }

    int32_t status = 0;
};

TEST_F(UserLibraryTest, IsFoundWithStatus0) {
    writeCfg("/Volumes/Audio/Music", "My Library");
    disk.addFolder("/Volumes/Audio/Music/My Library");
    EXPECT_EQ(lookUp(), "/Volumes/Audio/Music/My Library");
    EXPECT_EQ(status, 0);
    EXPECT_EQ(journal.everything(), lines({
                                        "asked: reachable /Prefs/Library.cfg",
                                        "asked: contents of /Prefs/Library.cfg",
                                        "asked: reachable /Volumes/Audio/Music/My Library/",
                                    }));
}

TEST_F(UserLibraryTest, IsReturnedWithStatus2WhenItsVolumeIsMissing) {
    writeCfg("/Volumes/Audio/Music", "My Library");
    EXPECT_EQ(lookUp(), "/Volumes/Audio/Music/My Library");
    EXPECT_EQ(status, 2);
    EXPECT_EQ(journal.effects(), "");
}

TEST_F(UserLibraryTest, IsMissingWithStatus1WithoutLibraryCfg) {
    EXPECT_EQ(lookUp(), "(nothing)");
    EXPECT_EQ(status, 1);
    EXPECT_EQ(journal.everything(), lines({"asked: reachable /Prefs/Library.cfg"}));
}

TEST_F(UserLibraryTest, IsMissingWithStatus4UnlessBothValuesArePresent) {
    for (const char* contents : {"", "<UserLibrary>\n<ProjectPath Value=\"/Volumes\">\n",
                                 "<UserLibrary>\n<ProjectName Value=\"Lib\">\n"}) {
        disk.addFile("/Prefs/Library.cfg", contents);
        EXPECT_EQ(lookUp(), "(nothing)") << contents;
        EXPECT_EQ(status, 4) << contents;
        EXPECT_EQ(journal.effects(), "");
    }
}

TEST_F(UserLibraryTest, IsMissingWithStatus4IfTheFileIsUnreadable) {
    writeCfg("/Volumes", "Lib");
    disk.items["/Prefs/Library.cfg"].readable = false;
    EXPECT_EQ(lookUp(), "(nothing)");
    EXPECT_EQ(status, 4);
}

TEST_F(UserLibraryTest, IsMissingWithStatus4IfTheFileIsNotUtf8) {
    writeCfg("/Volumes", "Lib");
    disk.items["/Prefs/Library.cfg"].contents += "\xFF";
    EXPECT_EQ(lookUp(), "(nothing)");
    EXPECT_EQ(status, 4);
}

TEST_F(UserLibraryTest, HasNoSecondSlashAddedBetweenParentAndName) {
    writeCfg("/Volumes/Audio/Music/", "My Library");
    EXPECT_EQ(lookUp(), "/Volumes/Audio/Music/My Library");
    writeCfg("/", "Lib");
    EXPECT_EQ(lookUp(), "/Lib");
    writeCfg("/Volumes//", "/Lib/");
    EXPECT_EQ(lookUp(), "/Volumes///Lib/");
}

TEST_F(UserLibraryTest, MayHaveAnEmptyParentOrName) {
    writeCfg("/Volumes/Audio", "");
    EXPECT_EQ(lookUp(), "/Volumes/Audio/");
    EXPECT_EQ(status, 2);
    writeCfg("", "Lib");
    EXPECT_EQ(lookUp(), "/Lib");
    writeCfg("", "");
    EXPECT_EQ(lookUp(), "/");
    EXPECT_EQ(status, 0);
}

TEST_F(UserLibraryTest, StartsWithStatus3) {
    int32_t first = 0;
    journal.watcher = [&](const std::string&) { first = first == 0 ? status : first; };
    lookUp();
    EXPECT_EQ(first, 3);
}

}  // namespace

}  // namespace morvella::tests
