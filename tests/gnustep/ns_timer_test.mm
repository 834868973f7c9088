#include <gtest/gtest.h>

#include "gnustep/turn.hpp"

#include <memory>

namespace morvella::gnustep_tests {

namespace {

/// A timer that counts in `ticks`; nothing else holds the block.
NSTimer* counting(const std::shared_ptr<int>& ticks, bool repeats) {
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the block keeps it.
    const std::shared_ptr<int> held = ticks;
    return [NSTimer timerWithTimeInterval:0.02
                                  repeats:repeats
                                    block:^(NSTimer*) {
                                        ++*held;
                                    }];
}

TEST(TimerTest, KeepsItsBlockUntilItIsInvalidated) {
    const auto ticks = std::make_shared<int>(0);
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    NSTimer* timer = counting(ticks, true);
    [[NSRunLoop mainRunLoop] addTimer:timer forMode:NSDefaultRunLoopMode];
    EXPECT_TRUE(turnUntil(NSDefaultRunLoopMode, [&] { return *ticks >= 2; }));
    EXPECT_GT(ticks.use_count(), 1);
    [timer invalidate];
    [pool release];
    EXPECT_TRUE(turnUntil(NSDefaultRunLoopMode, [&] { return ticks.use_count() == 1; }));
}

TEST(TimerTest, WithoutRepeatingTicksOnce) {
    const auto ticks = std::make_shared<int>(0);
    NSTimer* timer = counting(ticks, false);
    [[NSRunLoop mainRunLoop] addTimer:timer forMode:NSDefaultRunLoopMode];
    EXPECT_TRUE(turnUntil(NSDefaultRunLoopMode, [&] { return ![timer isValid]; }));
    EXPECT_EQ(*ticks, 1);
}

}  // namespace

}  // namespace morvella::gnustep_tests
