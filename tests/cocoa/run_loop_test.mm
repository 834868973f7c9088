#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "platform/cocoa/system.h"

#include <functional>
#include <memory>
#include <vector>

namespace morvella::cocoa_tests {

namespace {

/// Lets the main run loop turn until `done`, at the longest for ten seconds.
bool turnUntil(const std::function<bool()>& done) {
    NSDate* deadline = [NSDate dateWithTimeIntervalSinceNow:10];
    while (!done() && [deadline timeIntervalSinceNow] > 0) {
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        [[NSRunLoop mainRunLoop] runMode:NSDefaultRunLoopMode
                              beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.05]];
        [pool release];
    }
    return done();
}

TEST(RunLoopTest, MainQueueRunsWorkLaterInItsOrder) {
    CocoaRunLoop runLoop;
    std::vector<int> ran;
    for (const int number : {1, 2, 3}) {
        runLoop.dispatchAsync([&ran, number] { ran.push_back(number); });
    }
    EXPECT_TRUE(ran.empty());
    EXPECT_TRUE(turnUntil([&] { return ran.size() == 3; }));
    EXPECT_EQ(ran, (std::vector<int>{1, 2, 3}));
}

TEST(RunLoopTest, MainQueueLetsGoOfWorkThatRan) {
    CocoaRunLoop runLoop;
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> observer(held);
    runLoop.dispatchAsync([held] {});
    held.reset();
    EXPECT_FALSE(observer.expired());
    EXPECT_TRUE(turnUntil([&] { return observer.expired(); }));
}

TEST(RunLoopTest, TimerTicksForTheFirstTimeAfterAnIntervalAndThenAgain) {
    CocoaRunLoop runLoop;
    int ticks = 0;
    NSDate* start = [NSDate date];
    NSTimeInterval first = 0;
    runLoop.scheduleRepeatingTimer(0.1, [&](Timer& timer) {
        first = ticks == 0 ? -[start timeIntervalSinceNow] : first;
        if (++ticks == 3) {
            timer.invalidate();
        }
    });
    EXPECT_EQ(ticks, 0);
    EXPECT_TRUE(turnUntil([&] { return ticks == 3; }));
    EXPECT_GE(first, 0.09);
}

TEST(RunLoopTest, InvalidatedTimerTicksNoMoreAndIsLetGoOf) {
    CocoaRunLoop runLoop;
    auto ticks = std::make_shared<int>(0);
    const std::weak_ptr<int> observer(ticks);
    bool other = false;
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    runLoop.scheduleRepeatingTimer(0.02, [ticks](Timer& timer) {
        ++*ticks;
        timer.invalidate();
    });
    [pool release];
    // A second timer turns long after the first would have ticked again.
    runLoop.scheduleRepeatingTimer(0.3, [&other](Timer& timer) {
        other = true;
        timer.invalidate();
    });
    EXPECT_TRUE(turnUntil([&] { return other; }));
    EXPECT_EQ(*ticks, 1);
    ticks.reset();
    EXPECT_TRUE(turnUntil([&] { return observer.expired(); }));
}

TEST(RunLoopTest, TimerWaitsWhileTheRunLoopIsInAnotherMode) {
    CocoaRunLoop runLoop;
    int ticks = 0;
    runLoop.scheduleRepeatingTimer(0.02, [&ticks](Timer& timer) {
        ++ticks;
        timer.invalidate();
    });
    NSDate* end = [NSDate dateWithTimeIntervalSinceNow:0.2];
    NSTimer* keepsTurning = [NSTimer timerWithTimeInterval:0.01
                                                    target:[NSObject class]
                                                  selector:@selector(class)
                                                  userInfo:nil
                                                   repeats:YES];
    [[NSRunLoop mainRunLoop] addTimer:keepsTurning forMode:@"tracking"];
    while ([end timeIntervalSinceNow] > 0) {
        [[NSRunLoop mainRunLoop] runMode:@"tracking" beforeDate:end];
    }
    [keepsTurning invalidate];
    EXPECT_EQ(ticks, 0);
    EXPECT_TRUE(turnUntil([&] { return ticks == 1; }));
}

}  // namespace

}  // namespace morvella::cocoa_tests
