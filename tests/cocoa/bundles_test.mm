#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "cocoa/recorder.h"
#include "cocoa/temporary_folder.hpp"
#include "platform/cocoa/bundle.h"
#include "platform/cocoa/conversions.h"

namespace morvella::cocoa_tests {

namespace {

class BundlesTest : public ::testing::Test {
  protected:
    /// The text of CFBundleVersion in the bundle "NAME.app".
    std::optional<std::string> versionOf(const std::string& name) {
        const auto bundle =
            CocoaBundles().bundleWithUrl(FileUrl::directory(folder.at(name + ".app")));
        EXPECT_NE(bundle, nullptr);
        return bundle ? bundle->infoDictionaryText("CFBundleVersion") : std::nullopt;
    }

    void addBundle(const std::string& name, const std::string& dictionary) {
        folder.addFile(name + ".app/Contents/Info.plist",
                       "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                       "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                       "<plist version=\"1.0\"><dict>" +
                           dictionary + "</dict></plist>\n");
    }

    TemporaryFolder folder;
};

TEST_F(BundlesTest, ReturnTextFromTheInformationDictionary) {
    for (const std::string& name : difficultNames()) {
        // GNUstep's bundles treat a backslash as a separator.
        if (name.find('\\') != std::string::npos) {
            continue;
        }
        addBundle(name, "<key>CFBundleVersion</key><string>11.3.4 (2023-06-01)</string>");
        EXPECT_EQ(versionOf(name), "11.3.4 (2023-06-01)") << name;
    }
}

TEST_F(BundlesTest, ReturnNothingWithoutReadableText) {
    addBundle("without", "<key>CFBundleName</key><string>Live</string>");
    addBundle("number", "<key>CFBundleVersion</key><integer>11</integer>");
    folder.addFolder("bare.app/Contents");
    folder.addFile("damaged.app/Contents/Info.plist", "<plist><dict><key>CFBundleVersion</key>");
    folder.addFile("binary.app/Contents/Info.plist", std::string("bplist00\xFF\0\x01", 11));
    folder.addFile("list.app/Contents/Info.plist",
                   "<?xml version=\"1.0\"?><plist version=\"1.0\"><array/></plist>");
    for (const char* name : {"without", "number", "bare", "damaged", "binary", "list"}) {
        EXPECT_EQ(versionOf(name), std::nullopt) << name;
    }
}

TEST_F(BundlesTest, ReturnNullWithoutAFolder) {
    folder.addFile("file.app", "not a bundle");
    const CocoaBundles bundles;
    EXPECT_EQ(bundles.bundleWithUrl(FileUrl::directory(folder.at("missing.app"))), nullptr);
    EXPECT_EQ(bundles.bundleWithUrl(FileUrl::file(folder.at("file.app"))), nullptr);
}

TEST_F(BundlesTest, FindAResourceByItsFullName) {
    Recorder* recorder = [Recorder named:"bundle" replacing:[NSBundle class]];
    [recorder answer:@"/B/a.zip" to:@selector(pathForResource:ofType:)];
    takeRecorded();
    EXPECT_EQ(CocoaBundle(static_cast<id>(recorder)).pathForResource("a.zip"), "/B/a.zip");
    EXPECT_EQ(takeRecorded(), (Lines{"bundle pathForResource:ofType: a.zip nil"}));
}

TEST_F(BundlesTest, ReturnNothingForAnUnknownResource) {
    const auto bundle = CocoaBundles().mainBundle();
    EXPECT_EQ(bundle->pathForResource("no such resource.zip"), std::nullopt);
    EXPECT_EQ(bundle->attributedStringForResource("no such resource.rtf"), nullptr);
}

TEST_F(BundlesTest, ReturnNullForAnUnreadableDocument) {
    folder.addFile("good.txt", "licence");
    folder.addFile("closed.txt", "licence");
    folder.addFolder("folder.txt");
    std::filesystem::permissions(folder.at("closed.txt"), std::filesystem::perms::none);
    Recorder* recorder = [Recorder named:"bundle" replacing:[NSBundle class]];
    const CocoaBundle bundle(static_cast<id>(recorder));
    const auto isReadable = [&](const char* name) {
        NSURL* url = [NSURL fileURLWithPath:stringOf(folder.at(name)) isDirectory:NO];
        [recorder answer:url to:@selector(URLForResource:withExtension:)];
        return bundle.attributedStringForResource(name) != nullptr;
    };
    EXPECT_TRUE(isReadable("good.txt"));
    EXPECT_FALSE(isReadable("missing.txt"));
    EXPECT_FALSE(isReadable("folder.txt"));
    const OrdinaryUser user;
    EXPECT_FALSE(isReadable("closed.txt"));
    const Answering making([NSAttributedString class], @selector(alloc), @"not a document");
    EXPECT_FALSE(isReadable("good.txt")) << "an exception is raised";
}

}  // namespace

}  // namespace morvella::cocoa_tests
