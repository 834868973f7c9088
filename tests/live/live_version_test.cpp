#include "live/live_version.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace morvella {

namespace {

constexpr int32_t largest = std::numeric_limits<int32_t>::max();
constexpr int32_t smallest = std::numeric_limits<int32_t>::min();

TEST(IntValueTest, ReadsTheDigitsAtTheStart) {
    EXPECT_EQ(intValue("0"), 0);
    EXPECT_EQ(intValue("7"), 7);
    EXPECT_EQ(intValue("1029384756"), 1029384756);
    EXPECT_EQ(intValue("007"), 7);
    EXPECT_EQ(intValue("90"), 90);
}

TEST(IntValueTest, StopsAtTheFirstOtherCharacter) {
    EXPECT_EQ(intValue("11b12"), 11);
    EXPECT_EQ(intValue("12 34"), 12);
    EXPECT_EQ(intValue("3/4"), 3);
    EXPECT_EQ(intValue("3:4"), 3);
    EXPECT_EQ(intValue("3-4"), 3);
    EXPECT_EQ(intValue("1\xD9\xA3"), 1);
}

TEST(IntValueTest, IsZeroWithoutDigits) {
    EXPECT_EQ(intValue(""), 0);
    EXPECT_EQ(intValue("Beta"), 0);
    EXPECT_EQ(intValue("b12"), 0);
    EXPECT_EQ(intValue("-"), 0);
    EXPECT_EQ(intValue("+"), 0);
    EXPECT_EQ(intValue("   "), 0);
    EXPECT_EQ(intValue("- 3"), 0);
}

TEST(IntValueTest, SkipsWhiteSpaceAtTheStart) {
    for (const char* text : {" 5", "\t5", "\n5", "\v5", "\f5", "\r5", " \t\n\v\f\r5"}) {
        EXPECT_EQ(intValue(text), 5);
    }
}

TEST(IntValueTest, SkipsWhatFoundationTakesForWhiteSpace) {
    const auto number = [](const std::string& space) { return intValue(space + "5"); };
    for (int character = 0; character <= 0x20; ++character) {
        EXPECT_EQ(number(std::string(1, static_cast<char>(character))), 5) << character;
    }
    for (const char* space : {"\x7F", "\xC2\x80", "\xC2\x85", "\xC2\xA0", "\xE2\x80\x80",
                              "\xE2\x80\x8B", "\xE3\x80\x80", " \xC2\xA0\t\xE3\x80\x80"}) {
        EXPECT_EQ(number(space), 5) << space;
    }
    for (const char* other : {"\xC2", "\xC2\xA1", "\xC3\x80", "\xE2\x80", "\xE2\x80\x8C",
                              "\xE2\x81\x80", "\xE3\x80\x81", "\xE1\x9A\x80"}) {
        EXPECT_EQ(number(other), 0) << other;
    }
}

TEST(IntValueTest, SkipsNoOtherCharacterAtTheStart) {
    for (char character = '!'; character <= '~'; ++character) {
        const bool counts =
            (character >= '0' && character <= '9') || character == '+' || character == '-';
        if (!counts) {
            EXPECT_EQ(intValue(std::string(1, character) + "5"), 0) << character;
        }
    }
}

TEST(IntValueTest, TakesOneSign) {
    EXPECT_EQ(intValue("-1"), -1);
    EXPECT_EQ(intValue("+1"), 1);
    EXPECT_EQ(intValue(" -12x"), -12);
    EXPECT_EQ(intValue("--1"), 0);
    EXPECT_EQ(intValue("+-1"), 0);
    EXPECT_EQ(intValue("-+1"), 0);
}

TEST(IntValueTest, SaturatesAtThe32BitLimits) {
    EXPECT_EQ(intValue("2147483646"), largest - 1);
    EXPECT_EQ(intValue("2147483647"), largest);
    EXPECT_EQ(intValue("2147483648"), largest);
    EXPECT_EQ(intValue("4294967296"), largest);
    EXPECT_EQ(intValue("-2147483647"), smallest + 1);
    EXPECT_EQ(intValue("-2147483648"), smallest);
    EXPECT_EQ(intValue("-2147483649"), smallest);
    EXPECT_EQ(intValue(std::string(400, '9')), largest);
    EXPECT_EQ(intValue("-" + std::string(400, '9')), smallest);
}

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
