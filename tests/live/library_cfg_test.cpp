#include "live/library_cfg.hpp"

#include <gtest/gtest.h>

#include <string>

namespace morvella {

namespace {

using namespace std::string_literals;

/// The result of scanning `text`, as "parent + name".
std::string scanned(std::string_view text) {
    const UserLibraryEntry entry = scanLibraryCfg(text);
    return std::string(entry.parent.value_or("(none)")) + " + " +
           std::string(entry.name.value_or("(none)"));
}

std::string inSection(const std::string& line) {
    return "<UserLibrary>\n" + line + "\n</UserLibrary>\n";
}

struct Case {
    std::string name;
    std::string text;
    std::string entry;
};

class LibraryCfgTest : public ::testing::TestWithParam<Case> {};

TEST_P(LibraryCfgTest, IsScanned) {
    EXPECT_EQ(scanned(GetParam().text), GetParam().entry);
}

constexpr const char* nothing = "(none) + (none)";

INSTANTIATE_TEST_SUITE_P(
    Texts, LibraryCfgTest,
    ::testing::Values(
        Case{"Usual",
             "<?xml version=\"1.0\"?>\n"
             "<UserLibrary>\n"
             "    <ProjectName Value=\"My Library\" />\n"
             "    <ProjectPath Value=\"/Volumes/Audio/Music\" />\n"
             "</UserLibrary>\n",
             "/Volumes/Audio/Music + My Library"},
        Case{"ParentFirst",
             "<UserLibrary>\n<ProjectPath Value=\"/p\">\n<ProjectName Value=\"n\">\n", "/p + n"},
        Case{"BeforeTheSection",
             "<ProjectName Value=\"n\">\n<ProjectPath Value=\"/p\">\n"
             "<UserLibrary>\n</UserLibrary>\n",
             nothing},
        Case{"AfterTheSection",
             "<UserLibrary>\n</UserLibrary>\n"
             "<ProjectName Value=\"n\">\n<ProjectPath Value=\"/p\">\n",
             nothing},
        Case{"AfterAClosingTagAlone", "</UserLibrary>\n<ProjectName Value=\"n\">\n", nothing},
        Case{"Empty", "", nothing}, Case{"EmptyLine", "\n", nothing},
        Case{"EmptySection", "<UserLibrary>", nothing},
        Case{"ValueAfterTheOpeningTag",
             "<UserLibrary><ProjectName Value=\"n\">\n<ProjectPath Value=\"/p\">", "/p + n"},
        Case{"ValueBeforeTheOpeningTag",
             "<ProjectName Value=\"n\"><UserLibrary>\n<ProjectPath Value=\"/p\">", "/p + n"},
        Case{"ValueBeforeTheClosingTag",
             "<UserLibrary>\n<ProjectName Value=\"n\"></UserLibrary>\n"
             "<ProjectPath Value=\"/p\">\n",
             nothing},
        Case{"ValueAfterTheClosingTag", "<UserLibrary>\n</UserLibrary><ProjectName Value=\"n\">\n",
             nothing},
        Case{"OpenedAndClosedOnOneLine",
             "<UserLibrary></UserLibrary><ProjectName Value=\"n\">\n"
             "<ProjectPath Value=\"/p\">\n",
             nothing},
        Case{"ClosedAndOpenedOnOneLine",
             "<UserLibrary>\n<ProjectPath Value=\"/p\">\n"
             "</UserLibrary><UserLibrary>\n<ProjectName Value=\"n\">\n",
             "/p + (none)"},
        Case{"OpenedTwice",
             "<UserLibrary>\n<ProjectName Value=\"n\">\n<UserLibrary>\n"
             "<ProjectPath Value=\"/p\">\n",
             "/p + n"},
        Case{"LastValueOfEachKind",
             "<UserLibrary>\n<ProjectName Value=\"n1\">\n<ProjectPath Value=\"/p1\">\n"
             "<ProjectName Value=\"n2\">\n<ProjectPath Value=\"/p2\">\n",
             "/p2 + n2"},
        Case{"LaterSectionReplacesTheName",
             "<UserLibrary>\n<ProjectName Value=\"n1\">\n<ProjectPath Value=\"/p1\">\n"
             "</UserLibrary>\n<ProjectName Value=\"no\">\n"
             "<UserLibrary>\n<ProjectName Value=\"n2\">\n</UserLibrary>\n",
             "/p1 + n2"},
        Case{"LaterSectionReplacesTheParent",
             "<UserLibrary>\n<ProjectName Value=\"n1\">\n<ProjectPath Value=\"/p1\">\n"
             "</UserLibrary>\n<UserLibrary>\n<ProjectPath Value=\"/p2\">\n",
             "/p2 + n1"},
        Case{"TagInTheWrongCase", "<userlibrary>\n<ProjectName Value=\"n\">\n", nothing},
        Case{"SpaceInTheTag", "<UserLibrary >\n<ProjectName Value=\"n\">\n", nothing}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    LinesOfASection, LibraryCfgTest,
    ::testing::Values(
        Case{"TwoQuotes", inSection("<ProjectName Value=\"n\""), "(none) + n"},
        Case{"NoQuote", inSection("<ProjectName Value=n"), nothing},
        Case{"OneQuote", inSection("<ProjectName Value=\"n"), nothing},
        Case{"ThreeQuotes", inSection("<ProjectName Value=\"n\" Other=\""), nothing},
        Case{"FourQuotes", inSection("<ProjectName Value=\"n\" Other=\"o\""), nothing},
        Case{"FourQuotesForTheParent", inSection("<ProjectPath Value=\"/p\" Other=\"o\""), nothing},
        Case{"LaterInvalidValues",
             inSection("<ProjectName Value=\"n\">\n<ProjectName Value=\"x\" Other=\"o\">\n"
                       "<ProjectPath Value=\"/p\">\n<ProjectPath Value=\"/x>"),
             "/p + n"},
        Case{"QuotesBeforeTheMarker", inSection("a \"q\" b <ProjectName Value= c"), "(none) + q"},
        Case{"QuotesAtTheStart", inSection("\"q\"<ProjectPath Value="), "q + (none)"},
        Case{"EmptyValue", inSection("<ProjectName Value=\"\""), "(none) + "},
        Case{"BothMarkers", inSection("<ProjectName Value=<ProjectPath Value=\"/both\""),
             "/both + /both"},
        Case{"MarkerInTheWrongCase", inSection("<projectname Value=\"n\">"), nothing},
        Case{"TwoSpaces", inSection("<ProjectName  Value=\"n\">"), nothing},
        Case{"SpaceBeforeTheEqualsSign", inSection("<ProjectName Value =\"n\">"), nothing},
        Case{"NoEqualsSign", inSection("<ProjectPath Value\"n\">"), nothing},
        Case{"Escapes", inSection("<ProjectName Value=\"A &amp; B 'x' %@ \\n\">"),
             "(none) + A &amp; B 'x' %@ \\n"},
        Case{"NonAsciiText", inSection("<ProjectName Value=\"u\xCC\x88 \xF0\x9F\x8E\xB9\">"),
             "(none) + u\xCC\x88 \xF0\x9F\x8E\xB9"},
        Case{"NulBytes", inSection("\0<ProjectName Value=\"a\0b\">"s), "(none) + a\0b"s},
        Case{"LongLine", inSection(std::string(1 << 16, 'x') + "<ProjectName Value=\"n\">"),
             "(none) + n"}),
    [](const auto& test) { return test.param.name; });

TEST(LibraryCfgLineTest, EndsAtEveryNewlineCharacter) {
    for (const std::string newline :
         {"\n", "\v", "\f", "\r", "\r\n", "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"}) {
        EXPECT_EQ(scanned("<UserLibrary>" + newline + "<ProjectName Value=\"n\">" + newline +
                          "<ProjectPath Value=\"/p\">" + newline + "</UserLibrary>" + newline +
                          "<ProjectName Value=\"x\">"),
                  "/p + n");
        EXPECT_EQ(scanned("<ProjectName Value=\"n\">" + newline + "<UserLibrary>"), nothing);
        EXPECT_EQ(scanned(inSection("<ProjectName Value=\"a" + newline + "b\">")), nothing);
    }
}

TEST(LibraryCfgLineTest, EndsAtNoOtherCharacter) {
    for (const std::string other :
         {"\t", "\b", "\x0E", "\x1C", "\x1E", "\x1F", " ", "\xC2\x84", "\xC2\x86", "\xE2\x80\xA7",
          "\xE2\x80\xAA", "\xE2\x81\xA8", "\xC3\x85", "\xE3\x80\xA8"}) {
        EXPECT_EQ(scanned(inSection("<ProjectName Value=\"a" + other + "b\">")),
                  "(none) + a" + other + "b");
    }
}

}  // namespace

}  // namespace morvella
