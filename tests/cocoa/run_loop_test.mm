#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "cocoa/temporary_folder.hpp"
#include "cocoa/turn.h"
#include "platform/cocoa/system.h"

#include <functional>
#include <memory>
#include <vector>

namespace morvella::cocoa_tests {

namespace {

TEST(RunLoopTest, MainQueueRunsWorkLaterInOrderAndReleasesIt) {
    CocoaRunLoop runLoop;
    const auto ran = std::make_shared<std::vector<int>>();
    for (const int number : {1, 2, 3}) {
        runLoop.dispatchAsync([ran, number] { ran->push_back(number); });
    }
    EXPECT_TRUE(ran->empty());
    EXPECT_TRUE(turnUntil([&] { return ran.use_count() == 1; }));
    EXPECT_EQ(*ran, (std::vector<int>{1, 2, 3}));
}

TEST(RunLoopTest, TimerTicksEveryIntervalUntilItIsInvalidated) {
    CocoaRunLoop runLoop;
    auto ticks = std::make_shared<int>(0);
    const std::weak_ptr<int> observer(ticks);
    NSDate* start = [NSDate date];
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    runLoop.scheduleRepeatingTimer(0.1, [ticks](Timer& timer) {
        if (++*ticks == 3) {
            timer.invalidate();
        }
    });
    [pool release];
    ticks.reset();
    EXPECT_TRUE(turnUntil([&] { return observer.expired(); }));
    EXPECT_GE(-[start timeIntervalSinceNow], 0.29);
}

TEST(RunLoopTest, TimerWaitsWhileTheRunLoopIsInAnotherMode) {
    CocoaRunLoop runLoop;
    int ticks = 0;
    runLoop.scheduleRepeatingTimer(0.02, [&ticks](Timer& timer) {
        ++ticks;
        timer.invalidate();
    });
    NSDate* end = [NSDate dateWithTimeIntervalSinceNow:0.2];
    NSTimer* keepAlive = [NSTimer timerWithTimeInterval:0.01
                                                 target:[NSObject class]
                                               selector:@selector(class)
                                               userInfo:nil
                                                repeats:YES];
    [[NSRunLoop mainRunLoop] addTimer:keepAlive forMode:@"tracking"];
    while ([end timeIntervalSinceNow] > 0) {
        [[NSRunLoop mainRunLoop] runMode:@"tracking" beforeDate:end];
    }
    [keepAlive invalidate];
    EXPECT_EQ(ticks, 0);
    EXPECT_TRUE(turnUntil([&] { return ticks == 1; }));
}

TEST(RunLoopTest, KeepsRunningWhileATaskRuns) {
    const TemporaryFolder folder;
    CocoaRunLoop runLoop;
    bool queueRan = false;
    runLoop.dispatchAsync([&] { queueRan = true; });
    runLoop.scheduleRepeatingTimer(0.02, [&](Timer& timer) {
        if (queueRan) {
            timer.invalidate();
            folder.addFile("go");
        }
    });
    // Exits with 7 once the timer has created "go"; gives up with another status.
    const char* waits = "for i in $(seq 1000); do [ -e go ] && exit 7; sleep 0.01; done";
    const auto result = CocoaTaskRunner().run({"/bin/sh", {"-c", waits}, folder.path()});
    ASSERT_TRUE(result);
    EXPECT_EQ(result->terminationStatus, 7);
}

}  // namespace

}  // namespace morvella::cocoa_tests
