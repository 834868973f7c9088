#include <gtest/gtest.h>

#include <sys/stat.h>

#include "cocoa/temporary_folder.hpp"
#include "gnustep/texts.hpp"

namespace morvella::gnustep_tests {

namespace {

using cocoa_tests::TemporaryFolder;

/// The contents of a file; why it cannot be read if it cannot. Nothing is written to the log.
std::string contentsOf(const std::string& path) {
    NSError* error = untouched();
    ::testing::internal::CaptureStderr();
    NSData* data = [NSData dataWithContentsOfFile:string(path) options:0 error:&error];
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(error == untouched(), data != nil);
    return data ? std::string(static_cast<const char*>([data bytes]), [data length])
                : text([error localizedDescription]);
}

class DataTest : public ::testing::Test {
  protected:
    std::string contents(const std::string& name) { return contentsOf(folder.at(name)); }

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

TEST_F(DataTest, SaysWhyThereIsNone) {
    folder.addFolder("folder");
    ASSERT_EQ(mkfifo(folder.at("pipe").c_str(), 0600), 0);
    EXPECT_EQ(contents("missing"),
              "“" + folder.at("missing") + "” could not be read: No such file or directory.");
    EXPECT_EQ(contents("folder"),
              "“" + folder.at("folder") + "” could not be read: Is a directory.");
    EXPECT_EQ(contents("pipe"), "“" + folder.at("pipe") + "” could not be read: Invalid argument.");
}

}  // namespace

}  // namespace morvella::gnustep_tests
