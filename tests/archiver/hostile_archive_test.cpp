
#include "archiver_test.hpp"

namespace morvella {
namespace {

/// Beside the destination lies a folder "outside" that nothing in an archive may touch.
class HostileArchive : public ArchiverTest {
  protected:
    HostileArchive() {
        writeFile(secret, "secret");
        fs::permissions(secret, fs::perms{0600});
        fs::permissions(elsewhere, fs::perms{0700});
    }

    /// Unpacks these entries with a harmless one before and behind them.
    Outcome unpackEntries(std::vector<ZipEntry> entries) {
        entries.insert(entries.begin(), {"first", "1"});
        entries.push_back({"last", "2"});
        writeZip(archive, entries);
        return unpackAndWatch();
    }

    Outcome unpackAndWatch() {
        const Snapshot before = outside();
        Outcome result = unpack(archive);
        EXPECT_EQ(outside(), before);
        EXPECT_EQ(contentsOf(destination / "first"), "1");
        EXPECT_EQ(contentsOf(destination / "last"), "2");
        return result;
    }

    const fs::path elsewhere = folder / "outside";
    const fs::path secret = elsewhere / "secret";
};

class RefusedEntry : public HostileArchive, public ::testing::WithParamInterface<std::string> {};

TEST_P(RefusedEntry, IsNamedAndWrittenNowhere) {
    const std::string name = GetParam() == "ABSOLUTE" ? (elsewhere / "new").string() : GetParam();
    for (const ZipEntry& entry :
         {ZipEntry{name, "hostile"}, zipFolder(name, 0777), zipLink(name, "secret")}) {
        const Outcome result = unpackEntries({entry});
        EXPECT_EQ(result.status, 1);
        EXPECT_NE(result.errors.find("\nditto: " + name), std::string::npos) << result.errors;
        EXPECT_EQ(snapshot(destination).size(), 2U);
    }
}

INSTANTIATE_TEST_SUITE_P(Archiver, RefusedEntry,
                         ::testing::Values("ABSOLUTE", "../new", "../outside/secret", "..",
                                           "folder/../../outside/secret", "folder/..", "./../new",
                                           "folder/../new", "//new"));

TEST_F(HostileArchive, DoesNotWriteThroughLinkOfItsOwn) {
    const Outcome result = unpackEntries({zipLink("link", elsewhere),
                                          {"link/secret", "hostile"},
                                          {"link/new", "hostile"},
                                          zipFolder("link/folder"),
                                          zipLink("link/other", "secret")});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("ditto: link/new: Cannot extract through symlink"),
              std::string::npos)
        << result.errors;
}

TEST_F(HostileArchive, DoesNotWriteThroughRelativeLinkDeepInside) {
    const Outcome result = unpackEntries({zipFolder("a"),
                                          zipFolder("a/b"),
                                          zipLink("a/b/link", "../../../outside"),
                                          {"a/b/link/secret", "hostile"}});
    EXPECT_EQ(result.status, 1);
}

TEST_F(HostileArchive, DoesNotWriteThroughLinkThatIsThere) {
    fs::create_directory_symlink(elsewhere, destination / "link");
    const Outcome result =
        unpackEntries({{"link/secret", "hostile"}, {"link/folder/new", "hostile"}});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(fs::read_symlink(destination / "link"), elsewhere);
}

TEST_F(HostileArchive, DoesNotPutFolderInPlaceOfLinkThatIsThere) {
    fs::create_directory_symlink(elsewhere, destination / "link");
    for (const char* name : {"link", "link/", "./link", "link/.", "link//"}) {
        const Outcome result = unpackEntries({zipFolder(name, 0777), {"link/secret", "hostile"}});
        EXPECT_EQ(result.status, 1) << name;
        ASSERT_TRUE(fs::is_symlink(destination / "link")) << name;
        EXPECT_EQ(fs::read_symlink(destination / "link"), elsewhere) << name;
    }
}

TEST_F(HostileArchive, ReplacesLinkByFileInsteadOfWritingThroughIt) {
    fs::create_symlink(secret, destination / "there");
    const Outcome result =
        unpackEntries({{"there", "new"}, zipLink("own", secret), {"own", "new", AE_IFREG, 0777}});
    EXPECT_EQ(result.status, 0);
    EXPECT_FALSE(fs::is_symlink(destination / "there"));
    EXPECT_EQ(contentsOf(destination / "there"), "new");
    EXPECT_FALSE(fs::is_symlink(destination / "own"));
    EXPECT_EQ(contentsOf(destination / "own"), "new");
}

TEST_F(HostileArchive, DoesNotChangePermissionsThroughLinkThatReplacedFolder) {
    ZipEntry open = zipFolder("folder", 0777);
    open.modified = 1;
    const Outcome result = unpackEntries({open, zipLink("folder", elsewhere)});
    EXPECT_EQ(result.status, 0);
}

TEST_F(HostileArchive, DoesNotWriteThroughHardLinkThatIsThere) {
    fs::create_hard_link(secret, destination / "there");
    const Outcome result = unpackEntries({{"there", "new", AE_IFREG, 0777}});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(contentsOf(destination / "there"), "new");
    EXPECT_EQ(contentsOf(secret), "secret");
}

TEST_F(HostileArchive, KeepsLinkThatLeadsOutAsMereLink) {
    const Outcome result =
        unpackEntries({zipLink("absolute", secret), zipLink("relative", "../outside/secret")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(fs::read_symlink(destination / "absolute"), secret);
    EXPECT_EQ(fs::read_symlink(destination / "relative"), "../outside/secret");
}

TEST_F(HostileArchive, FileStandsWhereFolderMustBe) {
    writeFile(destination / "there", "mine");
    const Outcome result =
        unpackEntries({{"there/file", "new"}, {"own", "a file"}, {"own/file", "new"}});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("\nditto: there/file: "), std::string::npos) << result.errors;
    EXPECT_NE(result.errors.find("\nditto: own/file: "), std::string::npos) << result.errors;
    EXPECT_EQ(contentsOf(destination / "there"), "mine");
    EXPECT_EQ(contentsOf(destination / "own"), "a file");
}

TEST_F(HostileArchive, FolderStandsWhereFileMustBe) {
    writeFile(destination / "there" / "file", "mine");
    const Outcome result = unpackEntries({{"there", "new"}, zipLink("there", elsewhere)});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(contentsOf(destination / "there" / "file"), "mine");
}

TEST_F(HostileArchive, MakesNoDevices) {
    // libarchive writes none, so the type of a file is changed afterwards, in the zip's directory.
    writeZip(archive, {{"first", "1"}, {"null", ""}, {"last", "2"}});
    std::string zip = contentsOf(archive);
    const std::size_t header = zip.rfind("PK\1\2", zip.rfind("null"));
    for (const mode_t type : {AE_IFCHR, AE_IFBLK, AE_IFSOCK}) {
        const mode_t mode = type | 0666;
        zip[header + 40] = static_cast<char>(mode & 0xff);
        zip[header + 41] = static_cast<char>(mode >> 8);
        writeFile(archive, zip);
        const Outcome result = unpackAndWatch();
        EXPECT_EQ(result.status, 1);
        EXPECT_NE(result.errors.find("\nditto: null: "), std::string::npos) << result.errors;
        EXPECT_FALSE(fs::exists(destination / "null"));
    }
}

}  // namespace
}  // namespace morvella
