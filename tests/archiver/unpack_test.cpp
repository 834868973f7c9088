
#include "archiver_test.hpp"

namespace morvella {
namespace {

TEST_F(ArchiverTest, UnpackingNamesArchiveInOneLine) {
    writeZip(archive, {zipFolder("Morvella"), {"Morvella/one", "1"}, {"Morvella/two", "2"}});
    const Outcome result = unpack(archive);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, ">>> Copying " + archive.string() + "\n");
}

TEST_F(ArchiverTest, MakesMissingDestination) {
    writeZip(archive, {{"file", "contents"}});
    const fs::path deep = destination / "not" / "there";
    EXPECT_EQ(run(unpackArguments(archive, deep)).status, 0);
    EXPECT_EQ(contentsOf(deep / "file"), "contents");
}

TEST_F(ArchiverTest, UnpacksThroughLinkGivenAsDestination) {
    writeZip(archive, {{"file", "contents"}});
    fs::create_directory_symlink(destination, folder / "link");
    EXPECT_EQ(run(unpackArguments(archive, folder / "link")).status, 0);
    EXPECT_EQ(contentsOf(destination / "file"), "contents");
}

TEST_F(ArchiverTest, OverwritesWhatIsThereAndKeepsTheRest) {
    writeFile(destination / "Morvella" / "file", "an older, longer version");
    writeFile(destination / "Morvella" / "mine", "my own");
    fs::permissions(destination / "Morvella" / "file", fs::perms::owner_read);
    writeZip(archive, {{"Morvella/file", "newer"}});
    EXPECT_EQ(unpack(archive).status, 0);
    EXPECT_EQ(contentsOf(destination / "Morvella" / "file"), "newer");
    EXPECT_EQ(contentsOf(destination / "Morvella" / "mine"), "my own");
}

TEST_F(ArchiverTest, LeavesOutResourceForks) {
    writeZip(archive, {zipFolder("__MACOSX"),
                       {"__MACOSX/._Morvella", "attributes"},
                       {"__MACOSX/Morvella/._device", "attributes"},
                       zipFolder("Morvella"),
                       {"Morvella/device", "a device"},
                       {"Morvella/._device", "attributes"},
                       {"Morvella/__MACOSX/other", "attributes"},
                       {"Morvella/.hidden", "kept"},
                       {"Morvella/_.odd", "kept"},
                       {"._top", "attributes"}});
    EXPECT_EQ(unpack(archive).status, 0);
    std::vector<std::string> names;
    for (const auto& [name, description] : snapshot(destination)) {
        names.push_back(name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Morvella", "Morvella/.hidden", "Morvella/_.odd",
                                               "Morvella/device"}));
}

TEST_F(ArchiverTest, RestoresPermissionsTimesLinksAndEmptyFolders) {
    writeZip(archive, {zipFolder("Morvella", 0555),
                       zipFolder("Morvella/empty", 0700),
                       {"Morvella/program", "run me", AE_IFREG, 0755},
                       {"Morvella/secret", "read me", AE_IFREG, 0400},
                       zipLink("Morvella/link", "somewhere/else")});
    giveToOrdinaryUser(destination);
    EXPECT_EQ(unpack(archive, {.asOrdinaryUser = true}).status, 0);
    Snapshot unpacked = snapshot(destination);
    unpacked["Morvella/link"] = fs::read_symlink(destination / "Morvella" / "link");
    EXPECT_EQ(unpacked, (Snapshot{{"Morvella", "40555 at 1000000000"},
                                  {"Morvella/empty", "40700 at 1000000000"},
                                  {"Morvella/link", "somewhere/else"},
                                  {"Morvella/program", "100755 at 1000000000 holds run me"},
                                  {"Morvella/secret", "100400 at 1000000000 holds read me"}}));
}

TEST_F(ArchiverTest, MakesNoProgramRunAsSomebodyElse) {
    writeZip(archive, {zipFolder("folder", 07777), {"program", "run me", AE_IFREG, 06755}});
    EXPECT_EQ(unpack(archive).status, 0);
    const Snapshot unpacked = snapshot(destination);
    EXPECT_EQ(unpacked.at("folder"), "40777 at 1000000000");
    EXPECT_EQ(unpacked.at("program"), "100755 at 1000000000 holds run me");
}

TEST_F(ArchiverTest, DestinationKeepsItsOwnPermissions) {
    writeZip(archive, {zipFolder(".", 0), {"./file", "contents"}});
    fs::permissions(destination, fs::perms{0750});
    EXPECT_EQ(unpack(archive).status, 0);
    EXPECT_EQ(fs::status(destination).permissions(), fs::perms{0750});
    EXPECT_EQ(contentsOf(destination / "file"), "contents");
}

TEST_F(ArchiverTest, UnpacksTenThousandEntries) {
    std::vector<ZipEntry> entries;
    entries.reserve(10000);
    for (int i = 0; i < 10000; ++i) {
        entries.push_back(
            {"folder " + std::to_string(i % 100) + "/" + std::to_string(i), std::to_string(i)});
    }
    writeZip(archive, entries);
    EXPECT_EQ(unpack(archive).status, 0);
    for (const ZipEntry& entry : entries) {
        ASSERT_EQ(contentsOf(destination / entry.name), entry.contents) << entry.name;
    }
}

class UnpackedName : public ArchiverTest, public ::testing::WithParamInterface<std::string> {
  protected:
    [[nodiscard]] std::vector<std::string> namesInDestination() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(destination)) {
            names.push_back(entry.path().filename());
        }
        return names;
    }
};

TEST_P(UnpackedName, KeepsItsBytesWhenMarkedAsUtf8) {
    writeZip(archive, {zipFolder(GetParam()), {GetParam() + "/" + GetParam(), "contents"}});
    EXPECT_EQ(unpack(archive).status, 0);
    EXPECT_EQ(namesInDestination(), std::vector<std::string>{GetParam()});
    EXPECT_EQ(contentsOf(destination / GetParam() / GetParam()), "contents");
}

TEST_P(UnpackedName, KeepsItsBytesWhenUnmarked) {
    writeZip(archive, {zipFolder(GetParam()), {GetParam() + "/" + GetParam(), "contents"}},
             NameEncoding::unmarked);
    EXPECT_EQ(unpack(archive).status, 0);
    EXPECT_EQ(namesInDestination(), std::vector<std::string>{GetParam()});
    EXPECT_EQ(contentsOf(destination / GetParam() / GetParam()), "contents");
}

INSTANTIATE_TEST_SUITE_P(Archiver, UnpackedName,
                         ::testing::Values("with space", " ", "100 %s %n %@",
                                           "\"double\" 'single' `back`", "a\nnew line",
                                           "back\\slash", "-v", "*?[x]$HOME;&|",
                                           "\xF0\x9F\x8E\xB9 emoji", "composed \xC3\xA4",
                                           "decomposed a\xCC\x88", "\xED\x95\x9C Hangul",
                                           "\xE1\x84\x92\xE1\x85\xA1\xE1\x86\xAB Hangul in parts",
                                           "angstrom \xE2\x84\xAB", std::string(255, 'x')));

TEST_F(UnpackedName, KeepsItsBytesInAnotherEncoding) {
    const std::string latin1 = "Ger\xE4t.amxd";
    writeZip(archive, {{latin1, "contents"}}, NameEncoding::unmarked);
    EXPECT_EQ(unpack(archive).status, 0);
    EXPECT_EQ(namesInDestination(), std::vector<std::string>{latin1});
}

TEST_F(UnpackedName, BothNormalFormsLieSideBySide) {
    writeZip(archive, {{"\xC3\xA4", "composed"}, {"a\xCC\x88", "decomposed"}});
    EXPECT_EQ(unpack(archive).status, 0);
    EXPECT_EQ(contentsOf(destination / "\xC3\xA4"), "composed");
    EXPECT_EQ(contentsOf(destination / "a\xCC\x88"), "decomposed");
}

TEST_F(UnpackedName, KeepsTheBytesOfLinkTargets) {
    writeZip(archive, {zipLink("link \xC3\xA4", "decomposed a\xCC\x88"),
                       zipLink("other \xC3\xA4", "Ger\xE4t")});
    EXPECT_EQ(unpack(archive).status, 0);
    EXPECT_EQ(fs::read_symlink(destination / "link \xC3\xA4"), "decomposed a\xCC\x88");
    EXPECT_EQ(fs::read_symlink(destination / "other \xC3\xA4"), "Ger\xE4t");
}

}  // namespace
}  // namespace morvella
