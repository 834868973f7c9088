#include "platform/utf8.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace morvella {

namespace {

/// A second decoder, made to be obviously right: reads the bits as the lead byte announces them and
/// then looks at the number. Nothing for malformed text.
std::optional<std::vector<uint32_t>> decode(const std::string& text) {
    std::vector<uint32_t> numbers;
    for (size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i++]);
        const size_t following = lead < 0x80             ? 0
                                 : (lead & 0xE0) == 0xC0 ? 1
                                 : (lead & 0xF0) == 0xE0 ? 2
                                 : (lead & 0xF8) == 0xF0 ? 3
                                                         : 9;
        if (i + following > text.size()) {
            return std::nullopt;
        }
        uint32_t number = following == 0 ? lead : lead & (0x3FU >> following);
        for (size_t end = i + following; i < end; ++i) {
            const auto byte = static_cast<unsigned char>(text[i]);
            if ((byte & 0xC0) != 0x80) {
                return std::nullopt;
            }
            number = number << 6 | (byte & 0x3FU);
        }
        constexpr uint32_t smallest[] = {0, 0x80, 0x800, 0x10000};
        const bool surrogate = number >= 0xD800 && number <= 0xDFFF;
        if (number < smallest[following] || number > 0x10FFFF || surrogate) {
            return std::nullopt;
        }
        numbers.push_back(number);
    }
    return numbers;
}

size_t differences = 0;

void compare(const std::string& text) {
    const auto decoded = decode(text);
    bool same = isUtf8(text) == decoded.has_value();
    if (decoded) {
        size_t length = 0;
        for (const uint32_t number : *decoded) {
            length += number >= 0x10000 ? 2 : 1;
        }
        same = same && utf16Length(text) == length;
    }
    differences += same ? 0 : 1;
    if (!same && differences < 10) {
        ADD_FAILURE() << "differs on " << ::testing::PrintToString(text);
    }
}

std::string bytes(std::initializer_list<int> values) {
    std::string text;
    for (const int value : values) {
        text += static_cast<char>(value);
    }
    return text;
}

const std::vector<int> edges = {0x00, 0x41, 0x7F, 0x80, 0x81, 0x8F, 0x90, 0x9F,
                                0xA0, 0xBF, 0xC0, 0xC2, 0xE0, 0xF4, 0xFF};

class Utf8Test : public ::testing::Test {
  protected:
    void SetUp() override { differences = 0; }
    void TearDown() override { EXPECT_EQ(differences, 0U); }
};

TEST_F(Utf8Test, AgreesWithASimpleDecoderOnAllSequencesOfOneAndTwoBytes) {
    compare("");
    for (int first = 0; first < 256; ++first) {
        compare(bytes({first}));
        for (int second = 0; second < 256; ++second) {
            compare(bytes({first, second}));
        }
    }
}

TEST_F(Utf8Test, AgreesWithASimpleDecoderOnSequencesOfThreeBytes) {
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            for (const int third : edges) {
                compare(bytes({first, second, third}));
            }
        }
    }
}

TEST_F(Utf8Test, AgreesWithASimpleDecoderOnSequencesOfFourBytes) {
    for (int first = 0xE0; first < 256; ++first) {
        for (int second = 0x7F; second < 0xC2; ++second) {
            for (const int third : edges) {
                for (const int fourth : edges) {
                    compare(bytes({first, second, third, fourth}));
                }
            }
        }
    }
}

/// ASCII is skipped a word at a time: what follows it must be seen wherever it begins.
TEST_F(Utf8Test, SeesWhatFollowsAsciiOfAnyLength) {
    const std::vector<std::string> followers = {
        "",     "\xC3\xBC", "\xE2\x82\xAC", "\xF0\x9F\x8E\xB9", "\xC3", "\xE2\x82", "\xF0\x9F\x8E",
        "\x80", "\xFF"};
    for (size_t before = 0; before < 20; ++before) {
        for (const std::string& follower : followers) {
            for (size_t after = 0; after < 20; ++after) {
                compare(std::string(before, 'a').append(follower).append(after, 'b'));
            }
        }
    }
}

TEST_F(Utf8Test, CountsACharacterBeyondTheBasicPlaneTwice) {
    EXPECT_EQ(utf16Length(""), 0U);
    EXPECT_EQ(utf16Length("/"), 1U);
    EXPECT_EQ(utf16Length("u\xCC\x88"), 2U);
    EXPECT_EQ(utf16Length("\xC3\xBC"), 1U);
    EXPECT_EQ(utf16Length("\xEF\xBF\xBF"), 1U);
    EXPECT_EQ(utf16Length("\xF0\x90\x80\x80"), 2U);
    EXPECT_EQ(utf16Length("a\xF0\x9F\x8E\xB9z"), 4U);
}

}  // namespace

}  // namespace morvella
