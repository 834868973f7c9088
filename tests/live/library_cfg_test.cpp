#include "live/library_cfg.hpp"

#include <gtest/gtest.h>

#include <string>

namespace morvella {

namespace {

/// What the scan takes from `text`, as "parent + name".
std::string scanned(std::string_view text) {
    const UserLibraryEntry entry = scanLibraryCfg(text);
    return std::string(entry.parent.value_or("(none)")) + " + " +
           std::string(entry.name.value_or("(none)"));
}

/// The same of `line` inside a section.
std::string scannedLine(const std::string& line) {
    return scanned("<UserLibrary>\n" + line + "\n</UserLibrary>\n");
}

TEST(LibraryCfgTest, TakesNameAndParentFromTheSection) {
    EXPECT_EQ(scanned("<?xml version=\"1.0\"?>\n"
                      "<UserLibrary>\n"
                      "    <ProjectName Value=\"My Library\" />\n"
                      "    <ProjectPath Value=\"/Volumes/Audio/Music\" />\n"
                      "</UserLibrary>\n"),
              "/Volumes/Audio/Music + My Library");
}

TEST(LibraryCfgTest, TakesThemInAnyOrder) {
    EXPECT_EQ(scanned("<UserLibrary>\n<ProjectPath Value=\"/p\">\n<ProjectName Value=\"n\">\n"),
              "/p + n");
}

TEST(LibraryCfgTest, IgnoresValuesOutsideOfASection) {
    EXPECT_EQ(scanned("<ProjectName Value=\"n\">\n<ProjectPath Value=\"/p\">\n"
                      "<UserLibrary>\n</UserLibrary>\n"),
              "(none) + (none)");
    EXPECT_EQ(scanned("<UserLibrary>\n</UserLibrary>\n"
                      "<ProjectName Value=\"n\">\n<ProjectPath Value=\"/p\">\n"),
              "(none) + (none)");
    EXPECT_EQ(scanned("<ProjectName Value=\"n\">\n<ProjectPath Value=\"/p\">\n"),
              "(none) + (none)");
    EXPECT_EQ(scanned("</UserLibrary>\n<ProjectName Value=\"n\">\n"), "(none) + (none)");
}

TEST(LibraryCfgTest, IsEmptyForAnEmptyText) {
    EXPECT_EQ(scanned(""), "(none) + (none)");
    EXPECT_EQ(scanned("\n"), "(none) + (none)");
    EXPECT_EQ(scanned("<UserLibrary>"), "(none) + (none)");
}

TEST(LibraryCfgTest, TakesAValueFromTheLineThatOpensTheSection) {
    EXPECT_EQ(scanned("<UserLibrary><ProjectName Value=\"n\">\n<ProjectPath Value=\"/p\">"),
              "/p + n");
    EXPECT_EQ(scanned("<ProjectName Value=\"n\"><UserLibrary>\n<ProjectPath Value=\"/p\">"),
              "/p + n");
    EXPECT_EQ(scanned("x\n<ProjectName Value=\"n\"><UserLibrary>"), "(none) + n");
}

TEST(LibraryCfgTest, KeepsAValueOfTheFirstLineWhenTheLastOneCannotBeTaken) {
    EXPECT_EQ(scanned("<ProjectName Value=\"n\"><UserLibrary>\n"
                      "<ProjectName Value=\"two\" \"values\">\n"),
              "(none) + n");
}

TEST(LibraryCfgTest, TakesNoValueFromTheLineThatClosesTheSection) {
    EXPECT_EQ(scanned("<UserLibrary>\n<ProjectName Value=\"n\"></UserLibrary>\n"
                      "<ProjectPath Value=\"/p\">\n"),
              "(none) + (none)");
    EXPECT_EQ(scanned("<UserLibrary>\n</UserLibrary><ProjectName Value=\"n\">\n"),
              "(none) + (none)");
}

TEST(LibraryCfgTest, ALineThatOpensAndClosesLeavesTheSectionClosed) {
    EXPECT_EQ(scanned("<UserLibrary></UserLibrary><ProjectName Value=\"n\">\n"
                      "<ProjectPath Value=\"/p\">\n"),
              "(none) + (none)");
    EXPECT_EQ(scanned("</UserLibrary><UserLibrary>\n<ProjectName Value=\"n\">\n"),
              "(none) + (none)");
    EXPECT_EQ(scanned("<UserLibrary>\n<ProjectPath Value=\"/p\">\n"
                      "</UserLibrary><UserLibrary>\n<ProjectName Value=\"n\">\n"),
              "/p + (none)");
}

TEST(LibraryCfgTest, OpeningAnOpenSectionChangesNothing) {
    EXPECT_EQ(scanned("<UserLibrary>\n<ProjectName Value=\"n\">\n<UserLibrary>\n"
                      "<ProjectPath Value=\"/p\">\n"),
              "/p + n");
}

TEST(LibraryCfgTest, TheLastValueOfEachKindCounts) {
    EXPECT_EQ(scanned("<UserLibrary>\n<ProjectName Value=\"n1\">\n<ProjectPath Value=\"/p1\">\n"
                      "<ProjectName Value=\"n2\">\n<ProjectPath Value=\"/p2\">\n"),
              "/p2 + n2");
}

TEST(LibraryCfgTest, ALaterSectionReplacesEachKindSeparately) {
    EXPECT_EQ(scanned("<UserLibrary>\n<ProjectName Value=\"n1\">\n<ProjectPath Value=\"/p1\">\n"
                      "</UserLibrary>\n<ProjectName Value=\"no\">\n"
                      "<UserLibrary>\n<ProjectName Value=\"n2\">\n</UserLibrary>\n"),
              "/p1 + n2");
    EXPECT_EQ(scanned("<UserLibrary>\n<ProjectName Value=\"n1\">\n<ProjectPath Value=\"/p1\">\n"
                      "</UserLibrary>\n<UserLibrary>\n<ProjectPath Value=\"/p2\">\n"),
              "/p2 + n1");
}

TEST(LibraryCfgTest, WantsExactlyTwoQuotes) {
    EXPECT_EQ(scannedLine("<ProjectName Value=\"n\""), "(none) + n");
    EXPECT_EQ(scannedLine("<ProjectName Value=n"), "(none) + (none)");
    EXPECT_EQ(scannedLine("<ProjectName Value=\"n"), "(none) + (none)");
    EXPECT_EQ(scannedLine("<ProjectName Value=\"n\" Other=\""), "(none) + (none)");
    EXPECT_EQ(scannedLine("<ProjectName Value=\"n\" Other=\"o\""), "(none) + (none)");
    EXPECT_EQ(scannedLine("<ProjectPath Value=\"/p\" Other=\"o\""), "(none) + (none)");
}

TEST(LibraryCfgTest, KeepsTheEarlierValueWhenALineIsIgnored) {
    EXPECT_EQ(scannedLine("<ProjectName Value=\"n\">\n<ProjectName Value=\"x\" Other=\"o\">\n"
                          "<ProjectPath Value=\"/p\">\n<ProjectPath Value=\"/x>"),
              "/p + n");
}

TEST(LibraryCfgTest, TakesTheQuotedTextWhereverItStandsOnTheLine) {
    EXPECT_EQ(scannedLine("a \"q\" b <ProjectName Value= c"), "(none) + q");
    EXPECT_EQ(scannedLine("\"q\"<ProjectPath Value="), "q + (none)");
    EXPECT_EQ(scannedLine("<ProjectName Value=\"\""), "(none) + ");
}

TEST(LibraryCfgTest, ALineWithBothMarkersSetsBothValues) {
    EXPECT_EQ(scannedLine("<ProjectName Value=<ProjectPath Value=\"/both\""), "/both + /both");
}

TEST(LibraryCfgTest, DistinguishesLetterCaseAndBlanks) {
    EXPECT_EQ(scanned("<userlibrary>\n<ProjectName Value=\"n\">\n"), "(none) + (none)");
    EXPECT_EQ(scannedLine("<projectname Value=\"n\">"), "(none) + (none)");
    EXPECT_EQ(scannedLine("<ProjectName  Value=\"n\">"), "(none) + (none)");
    EXPECT_EQ(scannedLine("<ProjectName Value =\"n\">"), "(none) + (none)");
    EXPECT_EQ(scannedLine("<ProjectPath Value\"n\">"), "(none) + (none)");
    EXPECT_EQ(scanned("<UserLibrary >\n<ProjectName Value=\"n\">\n"), "(none) + (none)");
}

TEST(LibraryCfgTest, DecodesNothing) {
    EXPECT_EQ(scannedLine("<ProjectName Value=\"A &amp; B 'x' %@ \\n\">"),
              "(none) + A &amp; B 'x' %@ \\n");
    EXPECT_EQ(scannedLine("<ProjectName Value=\"u\xCC\x88 \xF0\x9F\x8E\xB9\">"),
              "(none) + u\xCC\x88 \xF0\x9F\x8E\xB9");
}

/// The value after `newline` lies outside of the section that the first line opens and closes, or
/// inside of one that the first line opens.
void expectEndsALine(const std::string& newline) {
    EXPECT_EQ(scanned("<UserLibrary>" + newline + "<ProjectName Value=\"n\">" + newline +
                      "<ProjectPath Value=\"/p\">" + newline + "</UserLibrary>" + newline +
                      "<ProjectName Value=\"x\">"),
              "/p + n");
    EXPECT_EQ(scanned("<UserLibrary></UserLibrary>" + newline + "<ProjectName Value=\"n\">"),
              "(none) + (none)");
    EXPECT_EQ(scanned("<ProjectName Value=\"n\">" + newline + "<UserLibrary>"), "(none) + (none)");
    EXPECT_EQ(scanned("\"" + newline + "<UserLibrary><ProjectName Value=\"n\">"), "(none) + n");
    EXPECT_EQ(scannedLine("<ProjectName Value=\"a" + newline + "b\">"), "(none) + (none)");
}

void expectEndsNoLine(const std::string& other) {
    EXPECT_EQ(scannedLine("<ProjectName Value=\"a" + other + "b\">"), "(none) + a" + other + "b");
    EXPECT_EQ(scanned("\"n\"<ProjectName Value=" + other + "<UserLibrary>"), "(none) + n");
}

TEST(LibraryCfgTest, EndsALineAtEveryNewlineCharacter) {
    for (const char* newline :
         {"\n", "\v", "\f", "\r", "\r\n", "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"}) {
        expectEndsALine(newline);
    }
}

TEST(LibraryCfgTest, EndsALineAtNoOtherCharacter) {
    for (const char* other :
         {"\t", "\b", "\x0E", "\x1C", "\x1E", "\x1F", " ", "\xC2\x84", "\xC2\x86", "\xE2\x80\xA7",
          "\xE2\x80\xAA", "\xE2\x81\xA8", "\xC3\x85", "\xE3\x80\xA8"}) {
        expectEndsNoLine(other);
    }
}

TEST(LibraryCfgTest, ReadsOverZeroBytes) {
    using namespace std::string_literals;
    EXPECT_EQ(scannedLine("\0<ProjectName Value=\"a\0b\">"s), "(none) + a\0b"s);
}

TEST(LibraryCfgTest, ReadsLinesOfAnyLength) {
    const std::string filler(1 << 16, 'x');
    EXPECT_EQ(scanned(filler + "<UserLibrary>" + filler + "\n" + filler +
                      "<ProjectName Value=\"n\">" + filler),
              "(none) + n");
}

}  // namespace

}  // namespace morvella
