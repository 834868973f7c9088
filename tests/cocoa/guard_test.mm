#include "platform/cocoa/guard.h"

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#import "platform/cocoa/MorvellaInstallerViewController.h"
#include "platform/cocoa/cocoa_platform.h"

/// Stands for the application; counts how often it is asked to end.
@interface StubApplication : NSObject {
  @public
    int endings;
}
- (void)terminate:(id)sender;
@end

@implementation StubApplication

- (void)terminate:(id)sender {
    NSLog(@"ends");
    ++endings;
}

@end

using morvella::guarded;
using morvella::clearUnknownStateHandler;
using morvella::setUnknownStateHandler;

namespace {

void raise() {
    [NSException raise:@"StubException" format:@"raised on purpose"];
}

class GuardTest : public ::testing::Test {
  protected:
    GuardTest() {
        NSApp = static_cast<id>(application);
        setUnknownStateHandler(this, [this] { ++unknownStates; });
    }

    ~GuardTest() override {
        clearUnknownStateHandler(this);
        NSApp = nil;
        [application release];
    }

    StubApplication* application = [[StubApplication alloc] init];
    int unknownStates = 0;
};

TEST_F(GuardTest, LetsWorkThatRaisesNothingBe) {
    bool worked = false;
    guarded([&] { worked = true; });
    EXPECT_TRUE(worked);
    EXPECT_EQ(unknownStates, 0);
    EXPECT_EQ(application->endings, 0);
}

TEST_F(GuardTest, TellsOfAnExceptionAndGoesOn) {
    guarded([] { raise(); });
    EXPECT_EQ(unknownStates, 1);
    EXPECT_EQ(application->endings, 0);
}

TEST_F(GuardTest, LogsTheNameAndTheReasonOfAnException) {
    const std::string line = "StubException: raised on purpose\n";
    ::testing::internal::CaptureStderr();
    guarded([] { raise(); });
    EXPECT_TRUE(::testing::internal::GetCapturedStderr().ends_with(line));
    setUnknownStateHandler(this, [] { [NSException raise:@"Other" format:@"while telling"]; });
    ::testing::internal::CaptureStderr();
    guarded([] { raise(); });
    const std::string logged = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(logged.find(line), std::string::npos) << logged;
    const size_t other = logged.find("Other: while telling\n");
    ASSERT_NE(other, std::string::npos) << logged;
    EXPECT_NE(logged.find("ends\n", other), std::string::npos) << "logged too late";
}

TEST_F(GuardTest, LogsAnExceptionBeforeItTellsOfIt) {
    setUnknownStateHandler(this, [] { NSLog(@"told"); });
    ::testing::internal::CaptureStderr();
    guarded([] { raise(); });
    const std::string logged = ::testing::internal::GetCapturedStderr();
    EXPECT_LT(logged.find("StubException"), logged.find("told\n")) << logged;
}

TEST_F(GuardTest, TellsOnceWhereWaysInAreNested) {
    guarded([] { guarded([] { raise(); }); });
    EXPECT_EQ(unknownStates, 1);
}

TEST_F(GuardTest, EndsTheApplicationIfTellingRaisesToo) {
    setUnknownStateHandler(this, [] { raise(); });
    guarded([] { raise(); });
    EXPECT_EQ(application->endings, 1);
}

TEST_F(GuardTest, EndsTheApplicationIfNobodyIsToldOfIt) {
    clearUnknownStateHandler(this);
    guarded([] { raise(); });
    EXPECT_EQ(application->endings, 1);
}

TEST_F(GuardTest, KeepsAHandlerThatAnotherOneHasSet) {
    clearUnknownStateHandler(application);
    guarded([] { raise(); });
    EXPECT_EQ(unknownStates, 1);
}

TEST_F(GuardTest, StandsBeforeTheButtons) {
    MorvellaInstallerViewController* door =
        [[[MorvellaInstallerViewController alloc] initWithNibName:nil bundle:nil] autorelease];
    setUnknownStateHandler(this, [this] { ++unknownStates; });
    // It understands nothing that a check box does.
    [door setPostInstallOpenDemoSetCheck:static_cast<id>(application)];
    [door installDoneButton:nil];
    EXPECT_EQ(unknownStates, 1);
}

TEST_F(GuardTest, StandsBeforeTheMainQueueAndTheTimers) {
    morvella::RunLoop& runLoop = morvella::cocoaPlatform().runLoop;
    runLoop.dispatchAsync([] { raise(); });
    runLoop.scheduleRepeatingTimer(0.001, [](morvella::Timer& timer) {
        timer.invalidate();
        raise();
    });
    NSDate* deadline = [NSDate dateWithTimeIntervalSinceNow:10];
    while (unknownStates<2 && [deadline timeIntervalSinceNow]> 0) {
        [[NSRunLoop mainRunLoop] runMode:NSDefaultRunLoopMode
                              beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.01]];
    }
    EXPECT_EQ(unknownStates, 2);
}

}  // namespace
