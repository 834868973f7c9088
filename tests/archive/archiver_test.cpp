#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class ArchiverTest : public InstallerTest {
  protected:
    bool unpack() {
        return controller.decompressResourceToURL("morvella.zip", FileUrl::directory("/UL"));
    }

    bool pack() {
        controller.setUserLibPath(text("/UL"));
        return controller.compressFolderAtToZipFilePath("/UL/Morvella", "/UL/Backup.zip");
    }

    /// Makes both commands end with this status and output.
    void endWith(int status, const std::string& output) {
        tasks.results["/Bundle/morvella.zip"] =
            TaskResult{.terminationStatus = status, .output = output};
        tasks.results["/UL/Backup.zip"] = tasks.results["/Bundle/morvella.zip"];
    }

    const std::string unpacking = unpacks("morvella.zip", "/UL");
    const std::string packing = packs("/UL/Morvella", "/UL/Backup.zip", "/UL");
};

TEST_F(ArchiverTest, LogsNothingWhenUnpackingPrintsNothing) {
    EXPECT_TRUE(unpack());
    expectEverything({"asked: path of resource morvella.zip",
                      "run: /usr/bin/ditto | -v | -x | -k | /Bundle/morvella.zip | /UL"});
}

TEST_F(ArchiverTest, UnpacksIntoThePathOfTheUrl) {
    EXPECT_TRUE(controller.decompressResourceToURL(
        "ISF.zip", FileUrl::directory("/Users/J\xC3\xBCrg \"J\" 100%@/Shared/Morvella/")));
    EXPECT_EQ(journal.only({Kind::command}),
              lines({unpacks("ISF.zip", "/Users/J\xC3\xBCrg \"J\" 100%@/Shared/Morvella")}));
}

TEST_F(ArchiverTest, LogsTheWholeOutputOfUnpackingInOneEntry) {
    endWith(0, ">>> Copying /Bundle/morvella.zip \nsecond line\n");
    EXPECT_TRUE(unpack());
    expectEffects({
        unpacking,
        "log: decompress status=>>> Copying /Bundle/morvella.zip \nsecond line\n",
    });
    endWith(1, "ditto: 100%@ Couldn't read");
    EXPECT_FALSE(unpack());
    expectEffects({unpacking, "log: decompress status=ditto: 100%@ Couldn't read"});
}

TEST_F(ArchiverTest, LogsNoOutputThatIsNotUtf8) {
    for (const int status : {0, 7}) {
        endWith(status, "half \xC3");
        EXPECT_EQ(unpack(), status == 0);
        expectEffects({unpacking});
    }
}

TEST_F(ArchiverTest, SucceedsOnlyWithStatusZero) {
    for (const int status : {1, 2, 7, 9, 255, -1, 256}) {
        endWith(status, "");
        EXPECT_FALSE(unpack());
        expectEffects({unpacking});
        EXPECT_FALSE(pack());
        expectEffects({packing});
    }
}

TEST_F(ArchiverTest, FailsSilentlyForAResourceMissingFromTheBundle) {
    bundles.main->resources.erase("morvella.zip");
    EXPECT_FALSE(unpack());
    expectEverything({"asked: path of resource morvella.zip"});
}

TEST_F(ArchiverTest, FailsSilentlyWhenItCannotBeStarted) {
    tasks.results["/Bundle/morvella.zip"] = std::nullopt;
    EXPECT_FALSE(unpack());
    expectEffects({unpacking});
    tasks.results["/UL/Backup.zip"] = std::nullopt;
    EXPECT_FALSE(pack());
    expectEffects({packing});
}

TEST_F(ArchiverTest, PacksAFolderInTheUserLibraryAndLogsNothing) {
    for (const int status : {0, 1}) {
        endWith(status, "some text");
        EXPECT_EQ(pack(), status == 0);
        expectEverything(
            {"run: /usr/bin/ditto | -c | -k | --sequesterRsrc | --keepParent | "
             "/UL/Morvella | /UL/Backup.zip in /UL"});
    }
}

}  // namespace

}  // namespace morvella::tests
