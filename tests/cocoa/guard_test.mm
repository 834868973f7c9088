#include "platform/cocoa/guard.h"

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <sstream>

#include "cocoa/turn.h"
#include "platform/cocoa/cocoa_platform.h"

/// Replaces the application.
@interface TerminationLog : NSObject
- (void)terminate:(id)sender;
@end

@implementation TerminationLog

- (void)terminate:(id)sender {
    NSLog(@"terminated");
}

@end

namespace morvella::cocoa_tests {

namespace {

void raise() {
    [NSException raise:@"StubException" format:@"raised on purpose"];
}

class GuardTest : public ::testing::Test {
  protected:
    GuardTest() {
        NSApp = static_cast<id>(application_);
        setUnknownStateHandler(this, [] { NSLog(@"handled"); });
    }
    ~GuardTest() override {
        clearUnknownStateHandler(this);
        NSApp = nil;
        [application_ release];
    }

    /// The lines logged while the guard runs `work`, without time and process.
    static std::string logOf(const std::function<void()>& work) {
        ::testing::internal::CaptureStderr();
        guarded(work);
        std::istringstream logged(::testing::internal::GetCapturedStderr());
        std::string lines;
        for (std::string line; std::getline(logged, line);) {
            lines += line.substr(line.find("] ") + 2) + "\n";
        }
        return lines;
    }

  private:
    TerminationLog* application_ = [[TerminationLog alloc] init];
};

TEST_F(GuardTest, CallsTheHandlerOnceForNestedEntryPoints) {
    EXPECT_EQ(logOf([] { guarded(raise); }), "StubException: raised on purpose\nhandled\n");
}

TEST_F(GuardTest, TerminatesIfTheHandlerRaisesToo) {
    setUnknownStateHandler(this, [] { [NSException raise:@"Other" format:@"while handling"]; });
    EXPECT_EQ(logOf(raise),
              "StubException: raised on purpose\nOther: while handling\nterminated\n");
}

TEST_F(GuardTest, TerminatesIfThereIsNoHandler) {
    clearUnknownStateHandler(this);
    EXPECT_EQ(logOf(raise), "StubException: raised on purpose\nterminated\n");
}

TEST_F(GuardTest, KeepsTheHandlerOfAnotherOwner) {
    clearUnknownStateHandler(NSApp);
    EXPECT_EQ(logOf(raise), "StubException: raised on purpose\nhandled\n");
}

TEST_F(GuardTest, GuardsTheMainQueueAndTheTimers) {
    int handled = 0;
    setUnknownStateHandler(this, [&] { ++handled; });
    RunLoop& runLoop = cocoaPlatform().runLoop;
    runLoop.dispatchAsync(raise);
    runLoop.scheduleRepeatingTimer(0.001, [](Timer& timer) {
        timer.invalidate();
        raise();
    });
    EXPECT_TRUE(turnUntil([&] { return handled == 2; }));
}

}  // namespace

}  // namespace morvella::cocoa_tests
