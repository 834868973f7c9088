#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "live/library_cfg.hpp"
#include "live/live_version.hpp"
#include "platform/cocoa/conversions.h"
#include "platform/file_url.hpp"
#include "platform/paths.hpp"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

/// The core's own path, URL and number functions beside Foundation's. Where GNUstep differs from
/// Apple's Foundation the core follows Apple's; each such difference is stated in a test here.
namespace morvella {

namespace {

const std::vector<std::string> paths = {"",
                                        "/",
                                        "a",
                                        ".app",
                                        "b.",
                                        "a..b",
                                        "/a",
                                        "/a/",
                                        "/a//b",
                                        "/a//",
                                        "/a b/..",
                                        "/.",
                                        "/a/b.app",
                                        "/a/.app",
                                        "/a.b/c",
                                        "a.b/",
                                        "a.app///",
                                        "x.u\xCC\x88",
                                        "100%.app",
                                        "C:\\a.b",
                                        "/a\\b.c",
                                        "/u\xCC\x88.app",
                                        "/a/.b.app",
                                        "/a/b.tar.gz",
                                        ".",
                                        " .app",
                                        "/Applications/Live 11 Suite.app",
                                        "/\xF0\x9F\x8E\xB9/%@/\"q\".x"};

const std::vector<std::string> components = {"b",  "/b",  "b/", "b//c", "",    ".",
                                             "..", "c.d", "/",  "\\b",  "%20", "u\xCC\x88"};

TEST(FoundationPathsTest, JoinsPathsAsNSStringDoes) {
    for (const std::string& path : paths) {
        for (const std::string& component : components) {
            EXPECT_EQ(appendingPathComponent(path, component),
                      textOf([stringOf(path) stringByAppendingPathComponent:stringOf(component)]))
                << path << " and " << component;
        }
    }
}

TEST(FoundationPathsTest, ReadsExtensionsAsNSStringDoes) {
    for (const std::string& path : paths) {
        EXPECT_EQ(pathExtension(path), textOf([stringOf(path) pathExtension])) << path;
    }
}

TEST(FoundationPathsTest, DeletesLastComponentsAsNSStringDoes) {
    for (const std::string& path : paths) {
        EXPECT_EQ(deletingLastPathComponent(path),
                  textOf([stringOf(path) stringByDeletingLastPathComponent]))
            << path;
    }
}

TEST(FoundationPathsTest, SplitsTextsAsNSStringDoes) {
    const std::vector<std::string> texts = {"",
                                            "a",
                                            "/Contents/MacOS/Live",
                                            "a/Contents/MacOS/Live",
                                            "a/Contents/MacOS/Live/Contents/MacOS/Live 11",
                                            "/Contents/MacOS/Contents/MacOS/LiveLive"};
    for (const std::string& text : texts) {
        std::vector<std::string> pieces;
        for (NSString* piece in
             [stringOf(text) componentsSeparatedByString:@"/Contents/MacOS/Live"]) {
            pieces.push_back(textOf(piece));
        }
        const auto views =
            componentsSeparatedBy<std::vector<std::string_view>>(text, "/Contents/MacOS/Live");
        EXPECT_EQ(std::vector<std::string>(views.begin(), views.end()), pieces) << text;
    }
}

void expectSameUrl(const FileUrl& url, NSURL* foundations) {
    EXPECT_EQ(url.absoluteString(), textOf([[foundations absoluteURL] absoluteString]));
    EXPECT_EQ(url.path(), textOf([[foundations absoluteURL] path]));
}

TEST(FoundationPathsTest, WritesUrlsAsNSURLDoes) {
    for (const std::string path : {"/", "/a", "/a b/c", "/100%/\"q\"", "/u\xCC\x88",
                                   "/\xF0\x9F\x8E\xB9", "/a#b?c;d", "/x%20y", "/~/z"}) {
        expectSameUrl(FileUrl::directory(path), [NSURL fileURLWithPath:stringOf(path)
                                                           isDirectory:YES]);
        if (path != "/") {
            expectSameUrl(FileUrl::file(path), [NSURL fileURLWithPath:stringOf(path)
                                                          isDirectory:NO]);
        }
    }
}

TEST(FoundationPathsTest, EncodesEveryAsciiCharacterAsNSURLDoes) {
    for (int character = 1; character < 127; ++character) {
        const std::string path = std::string("/x") + static_cast<char>(character);
        expectSameUrl(FileUrl::file(path), [NSURL fileURLWithPath:stringOf(path) isDirectory:NO]);
    }
}

TEST(FoundationPathsTest, ResolvesRelativePathsAsNSURLDoes) {
    const std::map<std::string, NSString*> encoded = {
        {"d", @"d"}, {"d/e", @"d/e"}, {"/d", @"/d"}, {"d/", @"d/"}, {"100%", @"100%25"}};
    for (const BOOL isDirectory : {NO, YES}) {
        NSURL* base = [NSURL fileURLWithPath:@"/a b/c" isDirectory:isDirectory];
        for (const auto& [relative, text] : encoded) {
            expectSameUrl(FileUrl::fileRelativeTo(relative, fileUrlOf(base)),
                          [NSURL URLWithString:text relativeToURL:base]);
        }
    }
}

TEST(FoundationPathsTest, ReadsIntegersAsNSStringDoes) {
    for (const std::string text :
         {"",     "7",   "007", " 5",  "\t5",     "\n5", "\v5",        "\f5",         "\r5",
          "-1",   "+1",  "--1", "+-1", "-",       "x",   "2147483647", "-2147483648", "11b1",
          "0x10", "1,5", "1e3", "1 2", "\xD9\xA3"}) {
        EXPECT_EQ(intValue(text), [stringOf(text) intValue]) << text;
    }
}

/// Whether `Library.cfg` is cut into lines at any of `characters`.
bool endsALine(NSString* characters) {
    const std::string between = textOf(characters);
    const std::string text = "<UserLibrary></UserLibrary>" + between + "<UserLibrary>" + between +
                             "<ProjectName Value=\"n\">";
    return scanLibraryCfg(text).name.has_value();
}

/// GNUstep's set lacks U+2028 and U+2029, which Apple's holds.
TEST(FoundationPathsTest, EndsLinesAtTheNewlineCharactersOfFoundation) {
    NSCharacterSet* newlines = [NSCharacterSet newlineCharacterSet];
    constexpr int block = 256;
    for (int first = 0; first < 0xD800; first += block) {
        NSMutableString* others = [NSMutableString string];
        for (int each = std::max(first, 1); each < first + block; ++each) {
            const auto character = unichar(each);
            NSString* text = [NSString stringWithCharacters:&character length:1];
            const bool isSeparator = character == 0x2028 || character == 0x2029;
            if (isSeparator || [newlines characterIsMember:character]) {
                EXPECT_TRUE(endsALine(text)) << character;
            } else {
                [others appendString:text];
            }
        }
        EXPECT_FALSE(endsALine(others)) << "one of the " << block << " from " << first;
    }
}

}  // namespace

}  // namespace morvella
