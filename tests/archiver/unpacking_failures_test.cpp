#include "archiver_test.hpp"

namespace morvella {
namespace {

using UnpackingFailure = ArchiverTest;

TEST_F(UnpackingFailure, MissingArchive) {
    fs::remove(destination);
    const Outcome result = unpack(archive);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "ditto: " + archive.string() + ": Failed to open '" +
                                 archive.string() + "': No such file or directory\n");
    EXPECT_FALSE(fs::exists(destination));
}

TEST_F(UnpackingFailure, ArchiveIsFolder) {
    const Outcome result = unpack(destination);
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("Is a directory"), std::string::npos) << result.errors;
}

TEST_F(UnpackingFailure, NoArchiveAtAll) {
    for (const std::string& contents :
         {std::string(), std::string(5000, 'x'), std::string("PK\3\4")}) {
        writeFile(archive, contents);
        const Outcome result = unpack(archive);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.errors, "ditto: " + archive.string() + ": Unrecognized archive format\n");
        EXPECT_TRUE(fs::is_empty(destination));
    }
}

TEST_F(UnpackingFailure, ArchiveWithoutEntries) {
    writeZip(archive, {});
    EXPECT_EQ(unpack(archive).status, 1);
    // As the end of a longer file it passes for an archive.
    writeFile(archive, std::string(100, 'x') + contentsOf(archive));
    EXPECT_EQ(unpack(archive).status, 1);
    EXPECT_TRUE(fs::is_empty(destination));
}

TEST_F(UnpackingFailure, TruncatedArchiveLeavesDestinationAlone) {
    writeZip(archive, {{"one", "1"}, {"two", "2"}, {"three", "3"}});
    const std::string whole = contentsOf(archive);
    for (std::size_t length = 0; length < whole.size(); length += 7) {
        writeFile(archive, whole.substr(0, length));
        const Outcome result = unpack(archive);
        EXPECT_NE(result.status, 0) << length;
        EXPECT_NE(result.errors.find("ditto: "), std::string::npos) << length;
        EXPECT_TRUE(fs::is_empty(destination)) << length;
    }
}

/// Where the n-th `signature` (of "PK" and two bytes) starts.
std::size_t find(const std::string& zip, const std::string& signature, int n) {
    std::size_t position = zip.find(signature);
    while (--n > 0) {
        position = zip.find(signature, position + 1);
    }
    return position;
}

TEST_F(UnpackingFailure, DamagedFileLeavesNothingInPart) {
    writeZip(archive, {{"file", "some contents that were deflated"}, {"other", "whole"}});
    std::string zip = contentsOf(archive);
    const std::size_t contents = find(zip, "PK\3\4", 1) + 30 + 4 + 24;
    const std::size_t end = find(zip, "PK\7\10", 1);
    for (std::size_t position = contents; position < end; ++position) {
        std::string damaged = zip;
        damaged[position] = static_cast<char>(~damaged[position]);
        writeFile(archive, damaged);
        const Outcome result = unpack(archive);
        EXPECT_EQ(result.status, 1) << position;
        EXPECT_NE(result.errors.find("\nditto: file: "), std::string::npos) << result.errors;
        EXPECT_EQ(snapshot(destination).size(), 1U) << position;
        EXPECT_EQ(contentsOf(destination / "other"), "whole") << position;
    }
}

TEST_F(UnpackingFailure, DamagedLocalHeader) {
    writeZip(archive, {{"one", "1"}, {"two", "2"}});
    std::string zip = contentsOf(archive);
    zip[find(zip, "PK\3\4", 2)] = 'x';
    writeFile(archive, zip);
    const Outcome result = unpack(archive);
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("Damaged Zip archive"), std::string::npos) << result.errors;
}

TEST_F(UnpackingFailure, DamagedDirectory) {
    writeZip(archive, {{"one", "1"}, {"two", "2"}});
    std::string zip = contentsOf(archive);
    zip[find(zip, "PK\1\2", 2)] = 'x';
    writeFile(archive, zip);
    EXPECT_EQ(unpack(archive).status, 1);
    EXPECT_TRUE(fs::is_empty(destination));
}

TEST_F(UnpackingFailure, NameIsNotInTheEncodingItIsMarkedWith) {
    writeZip(archive, {{"Ger\xE4t", "contents"}, {"other", "contents"}}, NameEncoding::utf8);
    const Outcome result = unpack(archive);
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("Pathname cannot be converted"), std::string::npos)
        << result.errors;
    EXPECT_EQ(snapshot(destination).size(), 1U);
    EXPECT_TRUE(fs::exists(destination / "other"));
}

TEST_F(UnpackingFailure, NameIsLongerThanTheFileSystemTakes) {
    writeZip(archive, {{std::string(256, 'x'), "contents"}, {"other", "contents"}});
    const Outcome result = unpack(archive);
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("File name too long"), std::string::npos) << result.errors;
    EXPECT_EQ(contentsOf(destination / "other"), "contents");
}

TEST_F(UnpackingFailure, NameIsTooLongToSay) {
    writeZip(archive, {{std::string(20'000, 'x'), "contents"}});
    const Outcome result = unpack(archive);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, ">>> Copying " + archive.string() + "\nditto: 1 further errors\n");
}

TEST_F(UnpackingFailure, EncryptedArchive) {
    writeZip(archive, {{"file", "contents"}}, NameEncoding::utf8, "secret");
    const Outcome result = unpack(archive);
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("Passphrase required"), std::string::npos) << result.errors;
    EXPECT_TRUE(fs::is_empty(destination));
}

TEST_F(UnpackingFailure, DestinationIsFileOrDanglingLink) {
    writeZip(archive, {{"file", "contents"}});
    writeFile(folder / "taken", "mine");
    fs::create_symlink("nowhere", folder / "dangling");
    const Snapshot before = outside();
    for (const char* name : {"taken", "dangling", "taken/below"}) {
        const Outcome result = run(unpackArguments(archive, folder / name));
        EXPECT_EQ(result.status, 1) << name;
        EXPECT_NE(result.errors.find("ditto: " + (folder / name).string()), std::string::npos)
            << result.errors;
    }
    EXPECT_EQ(outside(), before);
}

TEST_F(UnpackingFailure, UnwritableDestination) {
    writeZip(archive, {{"file", "contents"}});
    fs::permissions(destination, fs::perms{0555});
    giveToOrdinaryUser(destination);
    const Outcome result = unpack(archive, {.asOrdinaryUser = true});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("Permission denied"), std::string::npos) << result.errors;
}

TEST_F(UnpackingFailure, FileCannotGrow) {
    writeZip(archive, {{"small", "contents"}, {"large", std::string(100'000, 'x')}});
    const Outcome result = unpack(archive, {.largestFile = 50'000});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("ditto: large: "), std::string::npos) << result.errors;
    EXPECT_NE(result.errors.find("File too large"), std::string::npos) << result.errors;
    EXPECT_EQ(contentsOf(destination / "small"), "contents");
    EXPECT_FALSE(fs::exists(destination / "large"));
}

TEST_F(UnpackingFailure, ManyErrorsStillFitIntoPipe) {
    std::vector<ZipEntry> entries;
    entries.reserve(10000);
    for (int i = 0; i < 10000; ++i) {
        entries.push_back({"../" + std::to_string(i), ""});
    }
    writeZip(archive, entries);
    const Outcome result = unpack(archive);
    EXPECT_EQ(result.status, 1);
    EXPECT_LT(result.errors.size(), 32U * 1024);
    EXPECT_TRUE(result.errors.ends_with(" further errors\n")) << result.errors;
}

}  // namespace
}  // namespace morvella
