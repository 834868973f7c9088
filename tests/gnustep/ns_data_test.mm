#include <gtest/gtest.h>

#include <sys/stat.h>

#include <optional>
#include <string>

#include "cocoa/temporary_folder.hpp"
#include "gnustep/texts.hpp"

namespace morvella::gnustep_tests {

namespace {

using cocoa_tests::TemporaryFolder;

/// The contents of a file, or none. Nothing is written to the log.
std::optional<std::string> contentsOf(const std::string& path) {
    ::testing::internal::CaptureStderr();
    NSData* data = [NSData dataWithContentsOfFile:string(path) options:0 error:NULL];
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
    return data ? std::optional(std::string(static_cast<const char*>([data bytes]), [data length]))
                : std::nullopt;
}

class DataTest : public ::testing::Test {
  protected:
    std::optional<std::string> contents(const std::string& name) {
        return contentsOf(folder.at(name));
    }

    TemporaryFolder folder;
};

TEST_F(DataTest, HoldsAllBytesOfAFile) {
    const std::string bytes("a\0b\xFF\n", 5);
    folder.addFile("file", bytes);
    EXPECT_EQ(contents("file"), bytes);
}

TEST_F(DataTest, IsEmptyForAnEmptyFile) {
    folder.addFile("file");
    EXPECT_EQ(contents("file"), "");
}

TEST_F(DataTest, IsNoneOfWhatIsNoFile) {
    folder.addFolder("folder");
    ASSERT_EQ(mkfifo(folder.at("pipe").c_str(), 0600), 0);
    EXPECT_EQ(contents("missing"), std::nullopt);
    EXPECT_EQ(contents("folder"), std::nullopt);
    EXPECT_EQ(contents("pipe"), std::nullopt);
}

}  // namespace

}  // namespace morvella::gnustep_tests
