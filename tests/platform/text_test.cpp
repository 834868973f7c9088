#include "platform/text.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace morvella {

namespace {

using namespace std::string_literals;

/// The ends of each range of well-formed UTF-8, with the number of UTF-16 code units.
const std::vector<std::pair<std::string, size_t>> wellFormed = {
    {"", 0},
    {"\0"s, 1},
    {"/", 1},
    {"\x7F", 1},
    {"\xC2\x80", 1},
    {"\xDF\xBF", 1},
    {"\xE0\xA0\x80", 1},
    {"\xE0\xBF\xBF", 1},
    {"\xE1\x80\x80", 1},
    {"\xEC\xBF\xBF", 1},
    {"\xED\x80\x80", 1},
    {"\xED\x9F\xBF", 1},
    {"\xEE\x80\x80", 1},
    {"\xEF\xBF\xBF", 1},
    {"\xF0\x90\x80\x80", 2},
    {"\xF0\xBF\xBF\xBF", 2},
    {"\xF1\x80\x80\x80", 2},
    {"\xF3\xBF\xBF\xBF", 2},
    {"\xF4\x80\x80\x80", 2},
    {"\xF4\x8F\xBF\xBF", 2},
};

/// Just outside of those ranges: stray and missing continuation bytes, overlong forms, surrogates,
/// and what lies beyond U+10FFFF.
const std::vector<std::string> malformed = {
    "\x80",
    "\xBF",
    "\xC0\x80",
    "\xC1\xBF",
    "\xC2",
    "\xC2\x7F",
    "\xC2\xC0",
    "\xDF\xC0",
    "\xE0\x9F\xBF",
    "\xE0\xC0\x80",
    "\xE1\x80",
    "\xE1\x7F\x80",
    "\xE1\x80\x7F",
    "\xE1\x80\xC0",
    "\xEC\xC0\x80",
    "\xED\xA0\x80",
    "\xED\xBF\xBF",
    "\xEF\xBF\xC0",
    "\xF0\x8F\xBF\xBF",
    "\xF0\xC0\x80\x80",
    "\xF1\x80\x80",
    "\xF1\x80\x80\x7F",
    "\xF1\x80\x7F\x80",
    "\xF1\x80\x80\xC0",
    "\xF1\x80\xC0\x80",
    "\xF4\x90\x80\x80",
    "\xF5\x80\x80\x80",
    "\xFF",
};

TEST(Utf8Test, IsRecognisedWhereverItStands) {
    for (const auto& [text, units] : wellFormed) {
        EXPECT_TRUE(isUtf8(text)) << ::testing::PrintToString(text);
        EXPECT_TRUE(isUtf8("a" + text + text + "b")) << ::testing::PrintToString(text);
    }
    for (const std::string& text : malformed) {
        EXPECT_FALSE(isUtf8(text)) << ::testing::PrintToString(text);
        EXPECT_FALSE(isUtf8("a" + text + "b")) << ::testing::PrintToString(text);
    }
}

TEST(Utf8Test, ACharacterBeyondTheBasicPlaneCountsTwice) {
    for (const auto& [text, units] : wellFormed) {
        EXPECT_EQ(utf16Length(text), units) << ::testing::PrintToString(text);
        EXPECT_EQ(utf16Length("a" + text + text), 1 + 2 * units) << ::testing::PrintToString(text);
    }
}

TEST(IntValueTest, ReadsASignAndDigitsAtTheStart) {
    constexpr int32_t largest = 2147483647;
    const std::vector<std::pair<std::string, int32_t>> numbers = {
        {"0", 0},
        {"007", 7},
        {"1029384756", 1029384756},
        // The first other character ends the number.
        {"11b12", 11},
        {"12 34", 12},
        {"3/4", 3},
        {"3:4", 3},
        {"3-4", 3},
        {"1\xD9\xA3", 1},
        // There may be no digits.
        {"", 0},
        {"Beta", 0},
        {"b12", 0},
        {"   ", 0},
        // There is at most one sign, right before the digits.
        {"-", 0},
        {"-1", -1},
        {"+1", 1},
        {" -12x", -12},
        {"--1", 0},
        {"+-1", 0},
        {"-+1", 0},
        {"- 3", 0},
        // A number beyond 32 bits becomes the nearest one.
        {"2147483646", largest - 1},
        {"2147483647", largest},
        {"2147483648", largest},
        {"4294967296", largest},
        {std::string(400, '9'), largest},
        {"-2147483647", -largest},
        {"-2147483648", -largest - 1},
        {"-2147483649", -largest - 1},
        {"-" + std::string(400, '9'), -largest - 1},
    };
    for (const auto& [text, number] : numbers) {
        EXPECT_EQ(intValue(text), number) << text;
    }
}

TEST(IntValueTest, SkipsTheWhiteSpaceOfFoundation) {
    for (int character = 0; character <= '~'; ++character) {
        const bool isDigitOrSign =
            std::string("0123456789+-").find(char(character)) != std::string::npos;
        if (!isDigitOrSign) {
            EXPECT_EQ(intValue(std::string(1, char(character)) + "5"), character <= ' ' ? 5 : 0)
                << character;
        }
    }
    for (const char* space : {"\x7F", "\xC2\x80", "\xC2\x85", "\xC2\xA0", "\xE2\x80\x80",
                              "\xE2\x80\x8B", "\xE3\x80\x80", " \xC2\xA0\t\xE3\x80\x80"}) {
        EXPECT_EQ(intValue(space + "5"s), 5) << space;
    }
    for (const char* other : {"\xC2", "\xC2\xA1", "\xC3\x80", "\xE2\x80", "\xE2\x80\x8C",
                              "\xE2\x81\x80", "\xE3\x80\x81", "\xE1\x9A\x80"}) {
        EXPECT_EQ(intValue(other + "5"s), 0) << other;
    }
}

TEST(ComponentsTest, LieBetweenTheSeparators) {
    using Pieces = std::vector<std::string_view>;
    const auto split = componentsSeparatedBy<Pieces>;
    EXPECT_EQ(split("", "."), (Pieces{""}));
    EXPECT_EQ(split("abc", "."), (Pieces{"abc"}));
    EXPECT_EQ(split(".a..b.", "."), (Pieces{"", "a", "", "b", ""}));
    EXPECT_EQ(split("a/sep/b/sep", "/sep"), (Pieces{"a", "/b", ""}));
    EXPECT_EQ(split("aaa", "aa"), (Pieces{"", "a"}));
}

}  // namespace

}  // namespace morvella
