#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>

#include "archiver_test.hpp"

namespace morvella {
namespace {

class Packing : public ArchiverTest {
  protected:
    Packing() { fs::create_directory(source); }

    [[nodiscard]] std::vector<std::string> namesInZip() const {
        std::vector<std::string> names = zipNames(zip);
        std::sort(names.begin(), names.end());
        return names;
    }

    const fs::path source = folder / "Morvella";
    const fs::path zip = folder / "MorvellaBackup-2024-05-01(101500).zip";
};

TEST_F(Packing, IsSilent) {
    writeFile(source / "device", "a device");
    const Outcome result = pack(source, zip);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "");
}

TEST_F(Packing, FolderItselfIsOnlyTopLevelEntry) {
    writeFile(source / "Sources" / "Vellicor.amxd", "a device");
    writeFile(source / "read me", "please");
    const std::vector<std::string> expected{"Morvella/", "Morvella/Sources/",
                                            "Morvella/Sources/Vellicor.amxd", "Morvella/read me"};
    EXPECT_EQ(pack(source, zip).status, 0);
    EXPECT_EQ(namesInZip(), expected);
    EXPECT_EQ(pack(source / "", zip).status, 0);
    EXPECT_EQ(namesInZip(), expected);
    EXPECT_EQ(pack(source / "Sources" / "..", zip).status, 0);
    EXPECT_EQ(namesInZip(), expected);
    EXPECT_EQ(pack(".", zip, {.workingFolder = source}).status, 0);
    EXPECT_EQ(namesInZip(), expected);
}

TEST_F(Packing, UnpackedBackupEqualsFolder) {
    writeFile(source / "program", "run me");
    fs::permissions(source / "program", fs::perms{0755});
    writeFile(source / "secret", "read me");
    fs::permissions(source / "secret", fs::perms{0400});
    writeFile(source / "._kept in backup", "attributes");
    writeFile(source / "large", std::string(3'000'000, 'x'));
    writeFile(source / "large and random", incompressible(3'000'000));
    writeFile(source / "nothing", "");
    writeFile(source / "read-only" / "file", "contents");
    fs::permissions(source / "read-only", fs::perms{0555});
    fs::create_directories(source / "empty" / "empty");
    fs::create_symlink("program", source / "link");
    fs::create_symlink("/no/such/place", source / "dangling");
    fs::create_directory_symlink("read-only", source / "link to folder");
    const std::array<timespec, 2> old{{{0, UTIME_OMIT}, {1'000'000'001, 0}}};
    ASSERT_EQ(utimensat(AT_FDCWD, (source / "program").c_str(), old.data(), 0), 0);
    ASSERT_EQ(utimensat(AT_FDCWD, (source / "read-only").c_str(), old.data(), 0), 0);

    ASSERT_EQ(pack(source, zip).status, 0);
    EXPECT_EQ(std::ranges::count(namesInZip(), "Morvella/._kept in backup"), 1);
    ASSERT_EQ(unpack(zip).status, 0);
    Snapshot expected = snapshot(source);
    expected.erase("._kept in backup");
    EXPECT_TRUE(snapshot(destination / "Morvella") == expected);
    EXPECT_LT(fs::file_size(zip), 3'200'000U);
}

TEST_F(Packing, UnpackedNamesEqualPackedOnes) {
    for (const std::string name :
         {"with space", "100 %s %n %@", "\"double\" 'single'", "a\nnew line", "back\\slash", "-v",
          "\xF0\x9F\x8E\xB9 emoji", "\xC3\xA4 composed", "a\xCC\x88 decomposed",
          "Ger\xE4t in Latin-1", "\x8Eger\x84t in an older encoding", "\xED\xA0\x80 half a pair"}) {
        writeFile(source / name / name, name);
    }
    writeFile(source / std::string(255, 'x') / std::string(255, 'y'), "long");
    ASSERT_EQ(pack(source, zip).status, 0);
    ASSERT_EQ(unpack(zip).status, 0);
    EXPECT_EQ(snapshot(destination / "Morvella"), snapshot(source));
}

TEST_F(Packing, MarksUtf8NamesForOtherReaders) {
    writeFile(source / "\xC3\xA4", "UTF-8");
    writeFile(source / "\xE4", "Latin-1");
    ASSERT_EQ(pack(source, zip).status, 0);
    const std::string bytes = contentsOf(zip);
    const auto marked = [&bytes](const std::string& name) {
        const std::size_t header = bytes.find(name) - 30;
        return bytes.substr(header, 4) == "PK\3\4" && (bytes[header + 7] & 0x08) != 0;
    };
    EXPECT_TRUE(marked("Morvella/\xC3\xA4"));
    EXPECT_FALSE(marked("Morvella/\xE4"));
}

TEST_F(Packing, FollowsLinkGivenAsFolder) {
    writeFile(folder / "far" / "device", "a device");
    fs::remove(source);
    fs::create_directory_symlink("far", source);
    EXPECT_EQ(pack(source, zip).status, 0);
    EXPECT_EQ(namesInZip(), (std::vector<std::string>{"Morvella/", "Morvella/device"}));
}

TEST_F(Packing, ReplacesOlderZipWithOrdinaryFile) {
    writeFile(zip, "older");
    fs::permissions(zip, fs::perms{0600});
    writeFile(source / "device", "a device");
    const mode_t mask = umask(027);
    const Outcome result = pack(source, zip);
    umask(mask);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(namesInZip(), (std::vector<std::string>{"Morvella/", "Morvella/device"}));
    EXPECT_EQ(fs::status(zip).permissions(), fs::perms{0640});
}

}  // namespace
}  // namespace morvella
