#include "platform/file_url.hpp"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>
#include <string>

namespace morvella {

namespace {

TEST(FileUrlTest, OfAFileNamesNoDirectory) {
    const FileUrl url = FileUrl::file("/a/b");
    EXPECT_EQ(url.path(), "/a/b");
    EXPECT_FALSE(url.namesDirectory());
    EXPECT_EQ(url.absoluteString(), "file:///a/b");
}

TEST(FileUrlTest, OfADirectoryHasNoFinalSlashInItsPath) {
    for (const FileUrl& url : {FileUrl::directory("/a/b"), FileUrl::directory("/a/b/"),
                               FileUrl::directory("/a/b///"), FileUrl::file("/a/b/")}) {
        EXPECT_EQ(url.path(), "/a/b");
        EXPECT_TRUE(url.namesDirectory());
        EXPECT_EQ(url.absoluteString(), "file:///a/b/");
    }
}

TEST(FileUrlTest, OfTheRootHasOneSlash) {
    for (const FileUrl& url : {FileUrl::file("/"), FileUrl::directory("/"), FileUrl::file("//")}) {
        EXPECT_EQ(url.path(), "/");
        EXPECT_TRUE(url.namesDirectory());
        EXPECT_EQ(url.absoluteString(), "file:///");
    }
}

TEST(FileUrlTest, RelativePathResolvesInsideADirectory) {
    const FileUrl base = FileUrl::directory("/a/b");
    EXPECT_EQ(FileUrl::fileRelativeTo("c", base), FileUrl::file("/a/b/c"));
    EXPECT_EQ(FileUrl::fileRelativeTo("c/d", base), FileUrl::file("/a/b/c/d"));
    EXPECT_EQ(FileUrl::directoryRelativeTo("c", base), FileUrl::directory("/a/b/c"));
    EXPECT_EQ(FileUrl::fileRelativeTo("c", FileUrl::directory("/")), FileUrl::file("/c"));
}

TEST(FileUrlTest, RelativePathResolvesBesideAFile) {
    const FileUrl base = FileUrl::file("/a/b");
    EXPECT_EQ(FileUrl::fileRelativeTo("c", base), FileUrl::file("/a/c"));
    EXPECT_EQ(FileUrl::directoryRelativeTo("c", base), FileUrl::directory("/a/c"));
    EXPECT_EQ(FileUrl::fileRelativeTo("c", FileUrl::file("/a")), FileUrl::file("/c"));
}

TEST(FileUrlTest, AbsolutePathIgnoresTheBase) {
    const FileUrl base = FileUrl::directory("/a/b");
    EXPECT_EQ(FileUrl::fileRelativeTo("/c", base), FileUrl::file("/c"));
    EXPECT_EQ(FileUrl::directoryRelativeTo("/c", base), FileUrl::directory("/c"));
}

TEST(FileUrlTest, RelativePathWithAFinalSlashNamesADirectory) {
    EXPECT_EQ(FileUrl::fileRelativeTo("/c/", FileUrl::directory("/a")), FileUrl::directory("/c"));
    EXPECT_EQ(FileUrl::fileRelativeTo("c/", FileUrl::directory("/a")), FileUrl::directory("/a/c"));
}

TEST(FileUrlTest, EqualityComparesPathAndKind) {
    EXPECT_EQ(FileUrl::file("/a"), FileUrl::file("/a"));
    EXPECT_NE(FileUrl::file("/a"), FileUrl::directory("/a"));
    EXPECT_NE(FileUrl::file("/a"), FileUrl::file("/b"));
}

TEST(FileUrlTest, PathIsKeptByteForByte) {
    const std::string path = "/u\xCC\x88/\xC3\xBC/100%/\"q\"/\xF0\x9F\x8E\xB9";
    EXPECT_EQ(FileUrl::file(path).path(), path);
    EXPECT_EQ(FileUrl::directory(path).path(), path);
}

/// The name `byte` as encoded in a file's URL.
std::string encodedName(int byte) {
    const std::string text =
        FileUrl::file(std::string("/") + static_cast<char>(byte)).absoluteString();
    EXPECT_TRUE(text.starts_with("file:///")) << text;
    return text.substr(8);
}

TEST(FileUrlTest, TextEncodesEveryByteThatIsNotAllowed) {
    const std::string allowed =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"
        "!$&'()*+,-.:=@_~";
    for (const char character : allowed) {
        EXPECT_EQ(encodedName(character), std::string(1, character));
    }
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '/' && allowed.find(static_cast<char>(byte)) == std::string::npos) {
            std::ostringstream encoded;
            encoded << '%' << std::uppercase << std::hex << std::setw(2) << std::setfill('0')
                    << byte;
            EXPECT_EQ(encodedName(byte), encoded.str());
        }
    }
}

TEST(FileUrlTest, TextEncodesWholeNames) {
    EXPECT_EQ(
        FileUrl::file("/My Library/100% \"J\xC3\xBCrg\"?#;[\xF0\x9F\x8E\xB9]").absoluteString(),
        "file:///My%20Library/100%25%20%22J%C3%BCrg%22%3F%23%3B%5B%F0%9F%8E%B9%5D");
    EXPECT_EQ(FileUrl::directory("/u\xCC\x88 x").absoluteString(), "file:///u%CC%88%20x/");
}

}  // namespace

}  // namespace morvella
