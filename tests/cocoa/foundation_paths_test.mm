#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "platform/cocoa/conversions.h"
#include "platform/file_url.hpp"
#include "platform/paths.hpp"
#include "platform/text.hpp"

#include <map>
#include <string>
#include <vector>

/// Compares the core's path, URL and number functions with Foundation's. Where GNUstep differs from
/// Apple's Foundation, the core follows Apple's, and the core's own tests cover the difference.
namespace morvella {

namespace {

const std::vector<std::string> paths = {
    "",        "/",       "a",         ".app",    "b.",       "a..b",        "/a",
    "/a/",     "/a//b",   "/a//",      "/a b/..", "/.",       "/a/b.app",    "/a/.app",
    "/a.b/c",  "a.b/",    ".",         " .app",   "a.app///", "x.u\xCC\x88", "100%.app",
    "C:\\a.b", "/a\\b.c", "/a/.b.app", "a.b.c",   "b c.app"};

const std::vector<std::string> components = {"b",  "/b",  "b/", "b//c", "",    ".",
                                             "..", "c.d", "/",  "\\b",  "%20", "u\xCC\x88"};

TEST(FoundationPathsTest, HandlesPathsAsNSStringDoes) {
    for (const std::string& path : paths) {
        NSString* string = stringOf(path);
        EXPECT_EQ(pathExtension(path), textOf([string pathExtension])) << path;
        EXPECT_EQ(deletingLastPathComponent(path),
                  textOf([string stringByDeletingLastPathComponent]))
            << path;
        for (const std::string& component : components) {
            EXPECT_EQ(appendingPathComponent(path, component),
                      textOf([string stringByAppendingPathComponent:stringOf(component)]))
                << path << " and " << component;
        }
    }
}

void expectSameUrl(const FileUrl& url, NSURL* expected) {
    EXPECT_EQ(url.absoluteString(), textOf([[expected absoluteURL] absoluteString]));
    EXPECT_EQ(url.path(), textOf([[expected absoluteURL] path]));
}

TEST(FoundationPathsTest, WritesUrlsAsNSURLDoes) {
    std::vector<std::string> names = {"", "a b/c", "100%/\"q\"", "u\xCC\x88", "\xF0\x9F\x8E\xB9"};
    for (char character = 1; character < 127; ++character) {
        names.push_back(std::string("x") + character + "y");
    }
    for (const std::string& name : names) {
        NSString* path = stringOf("/" + name);
        expectSameUrl(FileUrl::directory("/" + name), [NSURL fileURLWithPath:path isDirectory:YES]);
        if (!name.empty()) {
            expectSameUrl(FileUrl::file("/" + name), [NSURL fileURLWithPath:path isDirectory:NO]);
        }
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

}  // namespace

}  // namespace morvella
