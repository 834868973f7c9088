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

TEST_F(UserLibraryTest, IsNothingWithStatus1WithoutLibraryCfg) {
    disk.addFolder("/Prefs");
    EXPECT_EQ(lookUp(), "(nothing)");
    EXPECT_EQ(status, 1);
    EXPECT_EQ(journal.everything(), lines({"asked: reachable /Prefs/Library.cfg"}));
}

TEST_F(UserLibraryTest, IsNothingWithStatus1WithoutTheFolder) {
    EXPECT_EQ(lookUp(), "(nothing)");
    EXPECT_EQ(status, 1);
}

TEST_F(UserLibraryTest, IsNothingWithStatus4ForAnEmptyFile) {
    disk.addFile("/Prefs/Library.cfg", "");
    EXPECT_EQ(lookUp(), "(nothing)");
    EXPECT_EQ(status, 4);
    EXPECT_EQ(journal.effects(), "");
}

TEST_F(UserLibraryTest, IsNothingWithStatus4ForAnUnreadableFile) {
    writeCfg("/Volumes", "Lib");
    disk.items["/Prefs/Library.cfg"].readable = false;
    EXPECT_EQ(lookUp(), "(nothing)");
    EXPECT_EQ(status, 4);
}

TEST_F(UserLibraryTest, IsNothingWithStatus4ForAFolderOfThatName) {
    disk.addFolder("/Prefs/Library.cfg");
    EXPECT_EQ(lookUp(), "(nothing)");
    EXPECT_EQ(status, 4);
}

TEST_F(UserLibraryTest, IsNothingWithStatus4WhenTheFileIsNotUtf8) {
    writeCfg("/Volumes", "Lib");
    disk.items["/Prefs/Library.cfg"].contents += "\xFF";
    EXPECT_EQ(lookUp(), "(nothing)");
    EXPECT_EQ(status, 4);
}

TEST_F(UserLibraryTest, IsNothingWithStatus4WithoutName) {
    disk.addFile("/Prefs/Library.cfg", "<UserLibrary>\n<ProjectPath Value=\"/Volumes\">\n");
    EXPECT_EQ(lookUp(), "(nothing)");
    EXPECT_EQ(status, 4);
}

TEST_F(UserLibraryTest, IsNothingWithStatus4WithoutParent) {
    disk.addFile("/Prefs/Library.cfg", "<UserLibrary>\n<ProjectName Value=\"Lib\">\n");
    EXPECT_EQ(lookUp(), "(nothing)");
    EXPECT_EQ(status, 4);
}

TEST_F(UserLibraryTest, IsNothingWithStatus4ForValuesOutsideOfTheSection) {
    disk.addFile("/Prefs/Library.cfg",
                 "<ProjectName Value=\"Lib\">\n<ProjectPath Value=\"/Volumes\">\n"
                 "<UserLibrary>\n</UserLibrary>\n");
    EXPECT_EQ(lookUp(), "(nothing)");
    EXPECT_EQ(status, 4);
}

TEST_F(UserLibraryTest, GetsNoSecondSlashBetweenParentAndName) {
    writeCfg("/Volumes/Audio/Music/", "My Library");
    EXPECT_EQ(lookUp(), "/Volumes/Audio/Music/My Library");
    writeCfg("/", "Lib");
    EXPECT_EQ(lookUp(), "/Lib");
    writeCfg("/Volumes//", "/Lib/");
    EXPECT_EQ(lookUp(), "/Volumes///Lib/");
}

TEST_F(UserLibraryTest, TakesEmptyValuesAsValues) {
    writeCfg("/Volumes/Audio", "");
    EXPECT_EQ(lookUp(), "/Volumes/Audio/");
    EXPECT_EQ(status, 2);
    writeCfg("", "Lib");
    EXPECT_EQ(lookUp(), "/Lib");
    writeCfg("", "");
    EXPECT_EQ(lookUp(), "/");
    EXPECT_EQ(status, 0);
}

/// Remembers what the status was when the file was first asked for.
TEST_F(UserLibraryTest, WritesStatus3BeforeAnythingElse) {
    class Watching : public FakeDisk {
      public:
        Watching(Journal& journal, const int32_t& status) : FakeDisk(journal), status_(status) {}
        bool isReachable(const FileUrl& url, ErrorOut error) const override {
            first = first == 0 ? status_ : first;
            return FakeDisk::isReachable(url, error);
        }
        mutable int32_t first = 0;

      private:
        const int32_t& status_;
    };
    Watching watching(journal, status);
    const Platform watched{application, bundles, clock,   controls, disk,        watching,
                           log,         runLoop, folders, tasks,    userDefaults};
    status = -7;
    EXPECT_EQ(getLiveUserLib(watched).getUserLibraryErrorInt("/Prefs", &status), std::nullopt);
    EXPECT_EQ(watching.first, 3);
    EXPECT_EQ(status, 1);
}

}  // namespace

}  // namespace morvella::tests
