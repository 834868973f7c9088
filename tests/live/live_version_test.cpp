#include "live/live_version.hpp"

#include <gtest/gtest.h>

#include <cstdint>

namespace morvella {

namespace {

void expectVersion(const char* folder, int32_t major, int32_t minor, int32_t patch) {
    EXPECT_EQ(liveVersionOfFolder(folder), (LiveVersion{major, minor, patch})) << folder;
}

TEST(LiveVersionTest, ReadsThreeNumbers) {
    expectVersion("Live 9.7.7", 9, 7, 7);
    expectVersion("Live 10.1.30", 10, 1, 30);
}

TEST(LiveVersionTest, TakesMissingNumbersAsZero) {
    expectVersion("Live 11.0", 11, 0, 0);
    expectVersion("Live 10.1", 10, 1, 0);
    expectVersion("Live 12", 12, 0, 0);
    expectVersion("Live ", 0, 0, 0);
    expectVersion("Live ..4", 0, 0, 4);
    expectVersion("Live 10..4", 10, 0, 4);
}

TEST(LiveVersionTest, IgnoresAFourthNumber) {
    expectVersion("Live 10.1.30.7", 10, 1, 30);
}

TEST(LiveVersionTest, EndsANumberAtALetter) {
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

TEST(LiveVersionTest, ComparesMajorThenMinorThenPatch) {
    const LiveVersion version{10, 1, 5};
    EXPECT_LT((LiveVersion{9, 9, 9}), version);
    EXPECT_LT((LiveVersion{10, 0, 9}), version);
    EXPECT_LT((LiveVersion{10, 1, 4}), version);
    EXPECT_EQ((LiveVersion{10, 1, 5}), version);
    EXPECT_GT((LiveVersion{10, 1, 6}), version);
    EXPECT_GT((LiveVersion{10, 2, 0}), version);
    EXPECT_GT((LiveVersion{11, 0, 0}), version);
    EXPECT_GT((LiveVersion{0, 0, 0}), (LiveVersion{-1, -1, -1}));
    EXPECT_EQ(LiveVersion{}, (LiveVersion{0, 0, 0}));
}

}  // namespace

}  // namespace morvella
