#include "platform/text.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morvella {

namespace {

using namespace std::string_literals;

/// Checks the text alone and inside another text.
void expectWellFormed(const std::string& text, size_t utf16Units) {
    EXPECT_TRUE(isUtf8(text)) << ::testing::PrintToString(text);
    EXPECT_TRUE(isUtf8("a" + text + text + "b")) << ::testing::PrintToString(text);
    EXPECT_EQ(utf16Length(text), utf16Units) << ::testing::PrintToString(text);
    EXPECT_EQ(utf16Length("a" + text + text), 1 + 2 * utf16Units) << ::testing::PrintToString(text);
}

void expectMalformed(const std::string& text) {
    EXPECT_FALSE(isUtf8(text)) << ::testing::PrintToString(text);
    EXPECT_FALSE(isUtf8("a" + text + "b")) << ::testing::PrintToString(text);
}

TEST(Utf8Test, AcceptsTheEndsOfEachRange) {
    expectWellFormed("", 0);
    expectWellFormed("\0"s, 1);
    for (const char* text :
         {"/", "\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xE0\xBF\xBF", "\xE1\x80\x80",
          "\xEC\xBF\xBF", "\xED\x80\x80", "\xED\x9F\xBF", "\xEE\x80\x80", "\xEF\xBF\xBF"}) {
        expectWellFormed(text, 1);
    }
    for (const char* text : {"\xF0\x90\x80\x80", "\xF0\xBF\xBF\xBF", "\xF1\x80\x80\x80",
                             "\xF3\xBF\xBF\xBF", "\xF4\x80\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        expectWellFormed(text, 2);
    }
}

TEST(Utf8Test, RejectsStrayAndMissingContinuationBytes) {
    for (const char* text : {"\x80", "\xBF", "\xC2", "\xC2\x7F", "\xC2\xC0", "\xDF\xC0", "\xE1\x80",
                             "\xE1\x7F\x80", "\xE1\x80\x7F", "\xE1\x80\xC0", "\xEC\xC0\x80"}) {
        expectMalformed(text);
    }
    for (const char* text :
         {"\xEF\xBF\xC0", "\xE1", "\xF1", "\xF0\xC0\x80\x80", "\xF1\x80\x80", "\xF1\x80\x80\x7F",
          "\xF1\x80\x7F\x80", "\xF1\x80\x80\xC0", "\xF1\x80\xC0\x80"}) {
        expectMalformed(text);
    }
}

TEST(Utf8Test, RejectsOverlongFormsSurrogatesAndAnythingBeyondU10FFFF) {
    for (const char* text :
         {"\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xE0\xC0\x80", "\xF0\x8F\xBF\xBF",
          "\xED\xA0\x80", "\xED\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"}) {
        expectMalformed(text);
    }
}

TEST(IntValueTest, ReadsTheDigitsAtTheStart) {
    EXPECT_EQ(intValue("007"), 7);
    EXPECT_EQ(intValue("1029384756"), 1029384756);
    for (const char* text : {"3", "3b12", "3 34", "3/4", "3:4", "3-4", "3\xD9\xA3"}) {
        EXPECT_EQ(intValue(text), 3) << text;
    }
    for (const char* text : {"", "0", "Beta", "b12", "   "}) {
        EXPECT_EQ(intValue(text), 0) << text;
    }
}

TEST(IntValueTest, ReadsAtMostOneSignRightBeforeTheDigits) {
    EXPECT_EQ(intValue("-1"), -1);
    EXPECT_EQ(intValue("+1"), 1);
    EXPECT_EQ(intValue(" -12x"), -12);
    for (const char* text : {"-", "--1", "+-1", "-+1", "- 3"}) {
        EXPECT_EQ(intValue(text), 0) << text;
    }
}

TEST(IntValueTest, ClampsNumbersBeyond32Bits) {
    constexpr int32_t largest = 2147483647;
    EXPECT_EQ(intValue("2147483646"), largest - 1);
    EXPECT_EQ(intValue("-2147483647"), -largest);
    const std::string digits(400, '9');
    for (const std::string& text : {"2147483647"s, "2147483648"s, "4294967296"s, digits}) {
        EXPECT_EQ(intValue(text), largest) << text;
    }
    for (const std::string& text : {"-2147483648"s, "-2147483649"s, "-" + digits}) {
        EXPECT_EQ(intValue(text), -largest - 1) << text;
    }
}

TEST(IntValueTest, SkipsWhatFoundationCountsAsWhiteSpace) {
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
