#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <string>

#import "platform/gnustep/ns_event.h"

namespace morvella::gnustep_tests {

namespace {

NSEvent* key(NSEventType type, unsigned short code, NSTimeInterval time) {
    return [NSEvent keyEventWithType:type
                            location:NSZeroPoint
                       modifierFlags:NSShiftKeyMask
                           timestamp:time
                        windowNumber:0
                             context:nil
                          characters:@"X"
         charactersIgnoringModifiers:@"x"
                           isARepeat:NO
                             keyCode:code];
}

/// Whether the application sends this event as a repeat.
bool repeats(NSEvent* event) {
    return [[NSEvent watched:event] isARepeat];
}

TEST(EventTest, TellsAHeldKeyFromOneThatIsPressedAgain) {
    EXPECT_FALSE(repeats(key(NSKeyDown, 40, 1)));
    EXPECT_TRUE(repeats(key(NSKeyDown, 40, 1.6)));
    EXPECT_FALSE(repeats(key(NSKeyUp, 40, 1.7)));
    EXPECT_TRUE(repeats(key(NSKeyDown, 40, 1.7)));
    EXPECT_FALSE(repeats(key(NSKeyUp, 40, 1.8)));
    EXPECT_FALSE(repeats(key(NSKeyDown, 40, 1.801)));
}

TEST(EventTest, TellsEachKeyByItself) {
    repeats(key(NSKeyDown, 40, 1));
    EXPECT_FALSE(repeats(key(NSKeyDown, 41, 1.1)));
    // Another key's release says nothing of the one that is held.
    EXPECT_FALSE(repeats(key(NSKeyUp, 40, 1.2)));
    EXPECT_TRUE(repeats(key(NSKeyDown, 41, 1.3)));
    repeats(key(NSKeyUp, 41, 1.4));
}

TEST(EventTest, KeepsOfARepeatWhatItWas) {
    repeats(key(NSKeyDown, 42, 1));
    NSEvent* event = [NSEvent watched:key(NSKeyDown, 42, 2)];
    EXPECT_EQ([event type], NSKeyDown);
    EXPECT_EQ([event timestamp], 2);
    EXPECT_EQ([event modifierFlags], NSShiftKeyMask);
    EXPECT_TRUE([[event characters] isEqualToString:@"X"]);
    EXPECT_TRUE([[event charactersIgnoringModifiers] isEqualToString:@"x"]);
    EXPECT_EQ([event keyCode], 42);
    repeats(key(NSKeyUp, 42, 3));
}

TEST(EventTest, AMonitorReplacesAndSwallowsTheEventsOfItsMask) {
    NSEvent* press = key(NSKeyDown, 50, 1);
    NSEvent* release = key(NSKeyUp, 50, 2);
    NSEvent* other = key(NSKeyDown, 51, 3);
    id replacing = [NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown
                                                         handler:^(NSEvent* event) {
                                                             return event == press ? other : event;
                                                         }];
    EXPECT_EQ([NSEvent watched:press], other);
    EXPECT_EQ([NSEvent watched:release], release);
    std::string seen;
    std::string* out = &seen;
    id swallowing = [NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown
                                                          handler:^NSEvent*(NSEvent* event) {
                                                              *out += event == other ? "o" : "?";
                                                              return nil;
                                                          }];
    EXPECT_EQ([NSEvent watched:press], nil);
    EXPECT_EQ(seen, "o");
    [NSEvent removeMonitor:swallowing];
    [NSEvent removeMonitor:replacing];
    EXPECT_EQ([NSEvent watched:release], release);
    EXPECT_EQ([NSEvent watched:press], press);
    EXPECT_EQ(seen, "o");
    EXPECT_EQ([NSEvent watched:release], release);
}

TEST(EventTest, TheSystemsUptimeIsTheClockOfTheEvents) {
    const auto now = [] {
        const std::chrono::duration<double> time =
            std::chrono::steady_clock::now().time_since_epoch();
        return std::fmod(time.count(), 4294967.296);
    };
    const double before = now();
    const double uptime = [[NSProcessInfo processInfo] systemUptime];
    EXPECT_LE(before - 0.001, uptime);
    EXPECT_LE(uptime, now());
}

}  // namespace

}  // namespace morvella::gnustep_tests
