#include <filesystem>

#include "cocoa/real_files_test.hpp"

namespace morvella::cocoa_tests {

namespace {

namespace fs = std::filesystem;

using Tree = std::vector<std::string>;

class ArchiverFilesTest : public RealFilesTest {
  protected:
    void addResource(const std::string& name) {
        folder.addFile("Bundle/" + name);
        bundles.main->resources[name] = folder.at("Bundle/" + name);
    }
};

TEST_F(ArchiverFilesTest, UnpackingHasItsCommandLineAndInheritsTheDirectory) {
    recordArchiver("");
    addResource("morvella.zip");
    EXPECT_TRUE(installer.decompressResourceToURL("morvella.zip", FileUrl::directory(library)));
    EXPECT_EQ(shortened(folder.contents("recorded")),
              "-v\n-x\n-k\nSTAGE/Bundle/morvella.zip\nSTAGE/home/Music/User Library\nin " +
                  fs::current_path().string() + "\n");
    EXPECT_EQ(logged(), "");
}

TEST_F(ArchiverFilesTest, PackingHasItsCommandLineAndRunsInTheUserLibrary) {
    recordArchiver("echo not logged");
    EXPECT_TRUE(installer.compressFolderAtToZipFilePath("/a folder", "/a zip"));
    EXPECT_EQ(shortened(folder.contents("recorded")),
              "-c\n-k\n--sequesterRsrc\n--keepParent\n/a folder\n/a zip\nin "
              "STAGE/home/Music/User Library\n");
    EXPECT_EQ(logged(), "");
}

TEST_F(ArchiverFilesTest, UnpackingLogsBothOutputsInOneLine) {
    recordArchiver("echo one; echo two >&2; exit 0");
    addResource("ISF.zip");
    EXPECT_TRUE(installer.decompressResourceToURL("ISF.zip", FileUrl::directory(library)));
    EXPECT_EQ(logged(), "log: decompress status=one\ntwo\n\n");
}

TEST_F(ArchiverFilesTest, OnlyExitStatusZeroIsSuccess) {
    addResource("ISF.zip");
    for (const char* end : {"exit 1", "exit 7", "exit 255", "kill -9 $$", "kill -15 $$"}) {
        recordArchiver(end);
        EXPECT_FALSE(installer.decompressResourceToURL("ISF.zip", FileUrl::directory(library)));
        EXPECT_FALSE(installer.compressFolderAtToZipFilePath("/a", "/b"));
    }
    EXPECT_EQ(logged(), "");
}

TEST_F(ArchiverFilesTest, OutputThatIsNoTextIsNotLogged) {
    addResource("ISF.zip");
    recordArchiver("printf 'half \\303'; exit 0");
    EXPECT_TRUE(installer.decompressResourceToURL("ISF.zip", FileUrl::directory(library)));
    EXPECT_EQ(logged(), "");
}

TEST_F(ArchiverFilesTest, AnArchiverThatIsNotThereFails) {
    addResource("ISF.zip");
    realTasks.archiver = folder.at("missing");
    EXPECT_FALSE(installer.decompressResourceToURL("ISF.zip", FileUrl::directory(library)));
    EXPECT_FALSE(installer.compressFolderAtToZipFilePath("/a", "/b"));
}

TEST_F(ArchiverFilesTest, PacksAndUnpacksUnderAnyName) {
    folder.addFile("packed/Sources/a b.amxd", "device");
    folder.addFolder("packed/empty");
    for (const std::string& name : difficultNames()) {
        makeArchive(name, "packed");
        const std::string out = "out/" + name;
        EXPECT_TRUE(installer.decompressResourceToURL(name, FileUrl::directory(folder.at(out))));
        EXPECT_EQ(folder.tree(out), (Tree{"packed/", "packed/Sources/",
                                          "packed/Sources/a b.amxd: device", "packed/empty/"}));
    }
}

TEST_F(ArchiverFilesTest, ADamagedArchiveFailsAndSaysSomething) {
    addResource("ISF.zip");
    folder.addFile("Bundle/ISF.zip", "this is no zip archive");
    EXPECT_FALSE(installer.decompressResourceToURL("ISF.zip", FileUrl::directory(library)));
    EXPECT_TRUE(logged().starts_with("log: decompress status=")) << logged();
    EXPECT_EQ(folder.tree("home/Music/User Library"), Tree());
}

}  // namespace

}  // namespace morvella::cocoa_tests
