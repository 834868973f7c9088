#include <sys/stat.h>

#include <algorithm>
#include <csignal>

#include "archiver_test.hpp"

namespace morvella {
namespace {

class PackingFailure : public ArchiverTest {
  protected:
    PackingFailure() { writeFile(source / "device", "a device"); }

    /// Expects that packing ends with this message, and that it leaves nothing behind.
    void expectRefused(const std::string& message, const Conditions& conditions = {}) {
        const std::vector<fs::path> before = items();
        const Outcome result = pack(source, zip, conditions);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.output, "");
        EXPECT_TRUE(result.errors.starts_with("ditto: ")) << result.errors;
        EXPECT_NE(result.errors.find(message), std::string::npos) << result.errors;
        EXPECT_EQ(items(), before);
    }

    /// A file that is far longer to read than a test can last, but takes no room.
    [[nodiscard]] fs::path makeEndlessFile() const {
        fs::path file = source / "endless";
        writeFile(file, incompressible(1'000'000));
        fs::resize_file(file, 64LL << 30);
        return file;
    }

    /// Waits until the archive has been written in part, under whatever name that begins with its
    /// own.
    [[nodiscard]] bool isHalfWritten() const {
        return eventually([this] {
            return std::ranges::any_of(items(), [this](const fs::path& item) {
                return item.string().starts_with(zip.string()) && fs::file_size(item) > 0;
            });
        });
    }

    [[nodiscard]] std::vector<fs::path> items() const {
        std::vector<fs::path> found;
        for (const auto& entry : fs::directory_iterator(library)) {
            found.push_back(entry.path());
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    const fs::path library = folder / "User Library";
    const fs::path source = library / "Morvella";
    const fs::path zip = library / "backup.zip";
};

TEST_F(PackingFailure, MissingFolder) {
    fs::remove_all(source);
    expectRefused(source.string() + ": No such file or directory");
}

TEST_F(PackingFailure, FileInsteadOfFolder) {
    fs::remove_all(source);
    writeFile(source, "a file");
    expectRefused(source.string() + ": Not a directory");
}

TEST_F(PackingFailure, UnreadableFile) {
    writeFile(source / "Sources" / "mine", "unreadable");
    giveToOrdinaryUser(library);
    fs::permissions(source / "Sources" / "mine", fs::perms::none);
    expectRefused("Morvella/Sources/mine: Permission denied", {.asOrdinaryUser = true});
}

TEST_F(PackingFailure, UnreadableFolder) {
    writeFile(source / "Sources" / "mine", "unreadable");
    giveToOrdinaryUser(library);
    fs::permissions(source / "Sources", fs::perms::none);
    expectRefused("Morvella/Sources: Couldn't visit directory", {.asOrdinaryUser = true});
}

TEST_F(PackingFailure, WhatNoZipCanHold) {
    ASSERT_EQ(mkfifo((source / "pipe").c_str(), 0644), 0);
    expectRefused("Morvella/pipe: ");
}

TEST_F(PackingFailure, UnwritableLibrary) {
    giveToOrdinaryUser(library);
    fs::permissions(library, fs::perms{0555});
    expectRefused("Permission denied", {.asOrdinaryUser = true});
}

TEST_F(PackingFailure, ZipCannotGrow) {
    writeFile(source / "large", incompressible(10'000));
    expectRefused("File too large", {.largestFile = 5'000});
}

TEST_F(PackingFailure, ZipInsideFolder) {
    const Snapshot before = snapshot(source);
    const fs::path link = folder / "link";
    fs::create_directory_symlink(source, link);
    const fs::path roundabout = library / "other" / ".." / "Morvella";
    for (const fs::path& packed : {source, link}) {
        for (const fs::path& place : {source, link, roundabout}) {
            const Outcome result = pack(packed, place / "backup.zip");
            EXPECT_EQ(result.status, 1);
            EXPECT_NE(result.errors.find("Lies inside the folder"), std::string::npos)
                << result.errors;
        }
    }
    EXPECT_EQ(snapshot(source), before);
}

TEST_F(PackingFailure, ZipBesideFolderOfSimilarNameIsNotInside) {
    EXPECT_EQ(pack(source, library / "Morvella.zip").status, 0);
    EXPECT_EQ(pack(source, library / "Morvell").status, 0);
}

TEST_F(PackingFailure, KeepsOlderZip) {
    writeFile(zip, "older");
    ASSERT_EQ(mkfifo((source / "pipe").c_str(), 0644), 0);
    expectRefused("Morvella/pipe: ");
    EXPECT_EQ(contentsOf(zip), "older");
}

TEST_F(PackingFailure, KilledMidwayLeavesNoZip) {
    static_cast<void>(makeEndlessFile());
    const pid_t process = start(packArguments(source, zip));
    EXPECT_TRUE(isHalfWritten());
    kill(process, SIGKILL);
    EXPECT_EQ(finish(process).status, -SIGKILL);
    EXPECT_FALSE(fs::exists(zip));
}

TEST_F(PackingFailure, FileBecomesShorterMeanwhile) {
    const fs::path file = makeEndlessFile();
    const pid_t process = start(packArguments(source, zip));
    EXPECT_TRUE(isHalfWritten());
    fs::resize_file(file, 0);
    const Outcome result = finish(process);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "ditto: Morvella/endless: Became shorter while it was packed\n");
    EXPECT_EQ(items(), std::vector<fs::path>{source});
}

}  // namespace
}  // namespace morvella
