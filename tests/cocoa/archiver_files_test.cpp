#include "cocoa/real_files_test.hpp"

namespace morvella::cocoa_tests {

namespace {

using Tree = std::vector<std::string>;

class ArchiverFilesTest : public RealFilesTest {};

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

TEST_F(ArchiverFilesTest, DamagedArchiveFailsAndTheReasonIsLogged) {
    folder.addFile("Bundle/ISF.zip", "this is no zip archive");
    bundles.main->resources["ISF.zip"] = folder.at("Bundle/ISF.zip");
    EXPECT_FALSE(installer.decompressResourceToURL("ISF.zip", FileUrl::directory(library)));
    EXPECT_TRUE(logged().starts_with("log: decompress status=")) << logged();
    EXPECT_EQ(folder.tree("home/Music/User Library"), Tree());
}

}  // namespace

}  // namespace morvella::cocoa_tests
