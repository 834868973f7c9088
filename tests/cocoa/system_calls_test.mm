#import <AppKit/AppKit.h>
#include <gtest/gtest.h>
#import <objc/runtime.h>

#include "cocoa/recorder.h"
#include "platform/cocoa/handle.h"
#include "platform/cocoa/system.h"
#include "platform/cocoa/user_defaults.h"

/// Cannot be started.
@interface UnstartableRecorder : Recorder
@end

@implementation UnstartableRecorder

- (void)launch {
    [NSException raise:NSInvalidArgumentException format:@"no such archiver"];
}

@end

namespace morvella::cocoa_tests {

namespace {

TEST(SystemCallsTest, ApplicationEndsForTheSender) {
    Recorder* shared = [Recorder named:"application" standingFor:[NSApplication class]];
    const Answering answering([NSApplication class], @selector(sharedApplication), shared);
    const Handle<Object, id> door([Recorder named:"door" standingFor:[NSObject class]]);
    takeRecorded();
    CocoaApplication().terminate(&door);
    CocoaApplication().terminate(nullptr);
    EXPECT_EQ(takeRecorded(), (Lines{"application terminate: door", "application terminate: nil"}));
}

TEST(SystemCallsTest, WorkspaceOpensAFileWithAnApplication) {
    Recorder* shared = [Recorder named:"workspace" standingFor:[NSWorkspace class]];
    const Answering answering([NSWorkspace class], @selector(sharedWorkspace), shared);
    takeRecorded();
    EXPECT_FALSE(CocoaWorkspace().openFile("/Demo 100%.als", "/Live.app/Contents/MacOS/Live"));
    EXPECT_EQ(takeRecorded(), (Lines{"workspace openFile:withApplication: /Demo 100%.als "
                                     "/Live.app/Contents/MacOS/Live"}));
    [shared answer:[NSNumber numberWithBool:YES] to:@selector(openFile:withApplication:)];
    EXPECT_TRUE(CocoaWorkspace().openFile("/Demo.als", "/Live.app"));
}

TEST(SystemCallsTest, DateFormatterIsGivenAFormatAndNothingElse) {
    Recorder* formatter = [Recorder named:"formatter" standingFor:[NSDateFormatter class]];
    [formatter answer:@"then" to:@selector(stringFromDate:)];
    const Answering making([NSDateFormatter class], @selector(alloc), formatter);
    takeRecorded();
    const Clock::Time time = Clock::Time(std::chrono::milliseconds(1614776709500));
    EXPECT_EQ(CocoaClock().format(time, "yyyy-MM-dd(HHmmss)"), "then");
    NSDate* date = [NSDate dateWithTimeIntervalSince1970:1614776709.5];
    EXPECT_EQ(takeRecorded(),
              (Lines{"formatter init", "formatter setDateFormat: yyyy-MM-dd(HHmmss)",
                     std::string("formatter stringFromDate: ") + [[date description] UTF8String]}));
}

NSTimer* timerMade(id, SEL, NSTimeInterval interval, BOOL repeats, void (^)(NSTimer*)) {
    record("timer every " + std::to_string(interval) + " s" + (repeats ? ", again and again" : ""));
    return static_cast<NSTimer*>(static_cast<id>([Recorder named:"timer"
                                                     standingFor:[NSTimer class]]));
}

TEST(SystemCallsTest, TimerIsAddedToTheMainRunLoopInItsDefaultModeOnly) {
    Recorder* loop = [Recorder named:"main run loop" standingFor:[NSRunLoop class]];
    const Answering answering([NSRunLoop class], @selector(mainRunLoop), loop);
    const Replaced making(object_getClass([NSTimer class]),
                          @selector(timerWithTimeInterval:repeats:block:),
                          reinterpret_cast<IMP>(timerMade), "@@:dc@?");
    takeRecorded();
    CocoaRunLoop().scheduleRepeatingTimer(5.0, [](Timer&) {});
    EXPECT_EQ(takeRecorded(), (Lines{"timer every 5.000000 s, again and again",
                                     std::string("main run loop addTimer:forMode: timer ") +
                                         [NSDefaultRunLoopMode UTF8String]}));
}

/// What the system is asked when a child process is started.
class TaskCallsTest : public ::testing::Test {
  protected:
    TaskCallsTest() {
        [pipe_ answer:output_ to:@selector(fileHandleForReading)];
        [output_ answer:[NSData dataWithBytes:"written" length:7]
                     to:@selector(readDataToEndOfFile)];
        [task answer:[NSNumber numberWithInt:3] to:@selector(terminationStatus)];
        takeRecorded();
    }

    std::optional<TaskResult> run(const Command& command, Recorder* made) {
        const Answering making([NSTask class], @selector(alloc), made);
        const Answering piping([NSPipe class], @selector(pipe), pipe_);
        return CocoaTaskRunner().run(command);
    }

    Recorder* task = [Recorder named:"task" standingFor:[NSTask class]];

  private:
    Recorder* pipe_ = [Recorder named:"pipe" standingFor:[NSPipe class]];
    Recorder* output_ = [Recorder named:"output" standingFor:[NSFileHandle class]];
};

const Lines launchToEnd{"task launch", "task waitUntilExit", "output readDataToEndOfFile",
                        "output closeFile", "task terminationStatus"};

TEST_F(TaskCallsTest, IsWaitedForBeforeItsOutputIsReadAndClosed) {
    const auto result = run({.launchPath = "/usr/bin/ditto", .arguments = {"-x", "a b"}}, task);
    Lines lines = takeRecorded();
    EXPECT_EQ(takeSettingsBefore("task launch", lines), (Lines{
                                                            "pipe fileHandleForReading",
                                                            "task init",
                                                            "task setArguments: -x a b",
                                                            "task setLaunchPath: /usr/bin/ditto",
                                                            "task setStandardError: pipe",
                                                            "task setStandardOutput: pipe",
                                                        }));
    EXPECT_EQ(lines, launchToEnd);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->terminationStatus, 3);
    EXPECT_EQ(result->output, "written");
}

TEST_F(TaskCallsTest, HasAWorkingDirectoryOnlyWhereOneIsGiven) {
    run({.launchPath = "/usr/bin/ditto", .currentDirectoryPath = "/User Library"}, task);
    Lines lines = takeRecorded();
    EXPECT_EQ(takeSettingsBefore("task launch", lines),
              (Lines{
                  "pipe fileHandleForReading",
                  "task init",
                  "task setArguments: ",
                  "task setCurrentDirectoryPath: /User Library",
                  "task setLaunchPath: /usr/bin/ditto",
                  "task setStandardError: pipe",
                  "task setStandardOutput: pipe",
              }));
    EXPECT_EQ(lines, launchToEnd);
}

TEST_F(TaskCallsTest, ThatCannotBeStartedIsNotWaitedFor) {
    Recorder* unstartable = [UnstartableRecorder named:"task" standingFor:[NSTask class]];
    EXPECT_EQ(run({.launchPath = "/missing"}, unstartable), std::nullopt);
    for (const std::string& line : takeRecorded()) {
        EXPECT_EQ(line.find("waitUntilExit"), std::string::npos);
        EXPECT_EQ(line.find("readDataToEndOfFile"), std::string::npos);
    }
}

TEST(UserDefaultsCallsTest, SuiteIsOpenedAnewEachTime) {
    Recorder* suite = [Recorder named:"suite" standingFor:[NSUserDefaults class]];
    const Answering making([NSUserDefaults class], @selector(alloc), suite);
    takeRecorded();
    CocoaUserDefaultsSuites().open("com.example.One");
    CocoaUserDefaultsSuites().open("com.example.One");
    EXPECT_EQ(takeRecorded(), (Lines{"suite initWithSuiteName: com.example.One",
                                     "suite initWithSuiteName: com.example.One"}));
}

TEST(UserDefaultsCallsTest, ValuesAreReadAndWrittenAsTheyAreAskedFor) {
    Recorder* object = [Recorder named:"suite" standingFor:[NSUserDefaults class]];
    CocoaUserDefaults suite(static_cast<NSUserDefaults*>(static_cast<id>(object)));
    [object answer:@"one" to:@selector(valueForKey:)];
    [object answer:@"other" to:@selector(objectForKey:)];
    takeRecorded();
    EXPECT_EQ(suite.valueForKey("key")->text(), "one");
    EXPECT_EQ(suite.objectForKey("key")->text(), "other");
    suite.setValueForKey(std::make_shared<CocoaDefaultsValue>(@"new"), "key");
    suite.setValueForKey(nullptr, "key");
    EXPECT_EQ(takeRecorded(),
              (Lines{"suite valueForKey: key", "suite objectForKey: key",
                     "suite setValue:forKey: new key", "suite setValue:forKey: nil key"}));
}

TEST(UserDefaultsCallsTest, TextOfWhatIsNoTextIsItsDescription) {
    EXPECT_EQ(CocoaDefaultsValue([NSNumber numberWithInt:7]).text(), "7");
    EXPECT_EQ(CocoaDefaultsValue(@"seven").text(), "seven");
}

}  // namespace

}  // namespace morvella::cocoa_tests
