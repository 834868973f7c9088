// Calls whose effects these tests cannot observe: GNUstep does nothing, or they need a display.

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>
#import <objc/runtime.h>

#include "cocoa/recorder.h"
#include "platform/cocoa/system.h"
#include "platform/cocoa/user_defaults.h"
#include "platform/cocoa/window.h"

#ifdef __APPLE__
using AnnouncementInfo = NSDictionary<NSAccessibilityNotificationUserInfoKey, id>;
#else
using AnnouncementInfo = NSDictionary;
#endif

/// Replaces AppKit's function.
void NSAccessibilityPostNotificationWithUserInfo(id element, NSString* notification,
                                                 AnnouncementInfo* info) {
    NSString* line =
        [NSString stringWithFormat:@"announcement by %@: %@ %@ (%@)", element, notification,
                                   [info objectForKey:NSAccessibilityAnnouncementKey],
                                   [info objectForKey:NSAccessibilityPriorityKey]];
    morvella::cocoa_tests::record([line UTF8String]);
}

namespace morvella::cocoa_tests {

namespace {

class ApplicationTest : public ::testing::Test {
  protected:
    ApplicationTest() {
        NSApp = static_cast<id>(shared);
        takeRecorded();
    }
    ~ApplicationTest() override { NSApp = nil; }

    Recorder* shared = [Recorder named:"application" replacing:[NSApplication class]];
};

TEST_F(ApplicationTest, RequestsAttentionOnlyWhileAnotherIsActive) {
    const auto request = [](NSRequestUserAttentionType type) {
        return "application requestUserAttention: " + std::to_string(type);
    };
    requestAttention(true);
    requestAttention(false);
    EXPECT_EQ(takeRecorded(), (Lines{"application isActive", request(NSCriticalRequest),
                                     "application isActive", request(NSInformationalRequest)}));
    [shared answer:[NSNumber numberWithBool:YES] to:@selector(isActive)];
    requestAttention(true);
    EXPECT_EQ(takeRecorded(), Lines{"application isActive"});
}

TEST_F(ApplicationTest, AnnouncesTextWithHighPriority) {
    CocoaApplication().announce("Licence 100%@");
    NSString* expected =
        [NSString stringWithFormat:@"announcement by application: %@ Licence 100%%@ (%d)",
                                   NSAccessibilityAnnouncementRequestedNotification,
                                   int(NSAccessibilityPriorityHigh)];
    EXPECT_EQ(takeRecorded(), Lines{[expected UTF8String]});
}

id beginActivity(id, SEL, uint64_t options, NSString* reason) {
    record((options == NSActivityUserInitiated ? "user's activity: " : "another: ") +
           std::string([reason UTF8String]));
    return [Recorder named:"activity" replacing:[NSObject class]];
}

void endActivity(id, SEL, id activity) {
    record("ended: " + std::string([[activity description] UTF8String]));
}

TEST(ActivityTest, LastsAsLongAsItIsHeld) {
    const Class info = [NSProcessInfo class];
    const Replaced beginning(info, @selector(beginActivityWithOptions:reason:), beginActivity);
    const Replaced ending(info, @selector(endActivity:), endActivity);
    takeRecorded();
    std::shared_ptr<void> activity = CocoaApplication().beginActivity("Installation");
    EXPECT_EQ(takeRecorded(), Lines{"user's activity: Installation"});
    activity.reset();
    EXPECT_EQ(takeRecorded(), Lines{"ended: activity"});
}

TEST(WorkspaceTest, OpensAFileWithAnApplication) {
    Recorder* shared = [Recorder named:"workspace" replacing:[NSWorkspace class]];
    const Answering answering([NSWorkspace class], @selector(sharedWorkspace), shared);
    takeRecorded();
    EXPECT_FALSE(CocoaApplication().openFile("/Demo 100%.als", "/Live.app/Contents/MacOS/Live"));
    EXPECT_EQ(takeRecorded(), (Lines{"workspace openFile:withApplication: /Demo 100%.als "
                                     "/Live.app/Contents/MacOS/Live"}));
    [shared answer:[NSNumber numberWithBool:YES] to:@selector(openFile:withApplication:)];
    EXPECT_TRUE(CocoaApplication().openFile("/Demo.als", "/Live.app"));
}

TEST(TaskCallsTest, WaitsForTheTaskBeforeReadingItsOutput) {
    Recorder* task = [Recorder named:"task" replacing:[NSTask class]];
    Recorder* pipe = [Recorder named:"pipe" replacing:[NSPipe class]];
    [pipe answer:[Recorder named:"output" replacing:[NSFileHandle class]]
              to:@selector(fileHandleForReading)];
    const Answering making([NSTask class], @selector(alloc), task);
    const Answering piping([NSPipe class], @selector(pipe), pipe);
    takeRecorded();
    CocoaTaskRunner().run({"/usr/bin/ditto", {"-x", "a b"}, "/User Library"});
    Lines lines = takeRecorded();
    lines.erase(lines.begin(), std::find(lines.begin(), lines.end(), "task launch"));
    EXPECT_EQ(lines, (Lines{"task launch", "task waitUntilExit", "output readDataToEndOfFile",
                            "output closeFile", "task terminationStatus"}));
}

TEST(UserDefaultsCallsTest, SuiteIsOpenedAnewEachTime) {
    Recorder* suite = [Recorder named:"suite" replacing:[NSUserDefaults class]];
    const Answering making([NSUserDefaults class], @selector(alloc), suite);
    takeRecorded();
    CocoaUserDefaultsSuites().open("com.example.One");
    CocoaUserDefaultsSuites().open("com.example.One");
    EXPECT_EQ(takeRecorded(), (Lines{"suite initWithSuiteName: com.example.One",
                                     "suite initWithSuiteName: com.example.One"}));
}

TEST(UserDefaultsCallsTest, ReadsAndWritesValuesWithTheRequestedMethod) {
    Recorder* object = [Recorder named:"suite" replacing:[NSUserDefaults class]];
    CocoaUserDefaults suite(static_cast<NSUserDefaults*>(static_cast<id>(object)));
    [object answer:@"one" to:@selector(valueForKey:)];
    [object answer:[NSNumber numberWithInt:7] to:@selector(objectForKey:)];
    takeRecorded();
    EXPECT_EQ(suite.valueForKey("key")->text(), "one");
    EXPECT_EQ(suite.objectForKey("key")->text(), "7");
    suite.setValueForKey(std::make_shared<CocoaDefaultsValue>(@"new"), "key");
    suite.setValueForKey(nullptr, "key");
    EXPECT_EQ(takeRecorded(),
              (Lines{"suite valueForKey: key", "suite objectForKey: key",
                     "suite setValue:forKey: new key", "suite setValue:forKey: nil key"}));
}

}  // namespace

}  // namespace morvella::cocoa_tests
