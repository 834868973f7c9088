#include "live/live_version.hpp"

#include <gtest/gtest.h>

#include <cstdint>

namespace morvella {

namespace {

void expectVersion(const char* folder, int32_t major, int32_t minor, int32_t patch) {
    EXPECT_EQ(liveVersionOfFolder(folder), (LiveVersion{major, minor, patch})) << folder;
}

TEST(LiveVersionTest, ReadsThreeNumbersAndIgnoresAFourth) {
    expectVersion("Live 9.7.7", 9, 7, 7);
    expectVersion("Live 10.1.30", 10, 1, 30);
    expectVersion("Live 10.1.30.7", 10, 1, 30);
}

TEST(LiveVersionTest, TreatsMissingNumbersAsZero) {
    expectVersion("Live 11.0", 11, 0, 0);
    expectVersion("Live 10.1", 10, 1, 0);
    expectVersion("Live 12", 12, 0, 0);
    expectVersion("Live ", 0, 0, 0);
    expectVersion("Live ..4", 0, 0, 4);
    expectVersion("Live 10..4", 10, 0, 4);
}

TEST(LiveVersionTest, IgnoresTextAfterANumber) {
    expectVersion("Live 11.0b12", 11, 0, 0);
    expectVersion("Live 12 beta", 12, 0, 0);
    expectVersion("Live Beta", 0, 0, 0);
}

TEST(LiveVersionTest, RemovesEveryPrefix) {
    expectVersion("Live Live 9.1", 9, 1, 0);
    expectVersion("Live 1Live 0.2", 10, 2, 0);
    expectVersion("Live 9.1Live .5", 9, 1, 5);
    expectVersion("Live live 9.1", 0, 1, 0);
}

TEST(LiveVersionTest, MayBeNegative) {
    expectVersion("Live -1", -1, 0, 0);
    expectVersion("Live -1.-2.-3", -1, -2, -3);
}

}  // namespace

}  // namespace morvella
