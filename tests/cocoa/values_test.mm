#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "cocoa/temporary_folder.hpp"
#include "platform/cocoa/conversions.h"
#include "platform/cocoa/system.h"
#include "platform/cocoa/user_defaults.h"

#include <chrono>

namespace morvella::cocoa_tests {

namespace {

using namespace std::chrono_literals;

TEST(ConversionsTest, KeepTextByteForByteAndDistinguishNilFromEmptyText) {
    for (const std::string& name : difficultNames()) {
        EXPECT_EQ(textOf(stringOf(name)), name);
    }
    EXPECT_TRUE([stringOf("not UTF-8: \xFF") isEqual:@""]);
    EXPECT_EQ(textOf(nil), "");
    EXPECT_EQ(optionalTextOf(nil), std::nullopt);
    EXPECT_EQ(optionalTextOf(@""), "");
    EXPECT_EQ(sharedTextOf(nil), nullptr);
    EXPECT_EQ(*sharedTextOf(@""), "");
    EXPECT_EQ(stringOf(std::shared_ptr<const std::string>()), nil);
    EXPECT_EQ([stringOf(std::make_shared<const std::string>("x")) length], 1U);
}

TEST(ClockTest, FormatsATimeInTheSystemsTimeZoneOnA24HourClock) {
    // 2021-03-03 13:05:09 UTC
    const Clock::Time time = Clock::Time(std::chrono::seconds(1614776709));
    const char* format = "yyyy-MM-dd(HHmmss)";
    NSTimeZone* before = [[[NSTimeZone defaultTimeZone] retain] autorelease];
    [NSTimeZone setDefaultTimeZone:[NSTimeZone timeZoneForSecondsFromGMT:3600]];
    EXPECT_EQ(CocoaClock().format(time, format), "2021-03-03(140509)");
    EXPECT_EQ(CocoaClock().format(time + 13h, format), "2021-03-04(030509)");
    [NSTimeZone setDefaultTimeZone:before];
}

TEST(ClockTest, ReturnsTheCurrentTime) {
    const auto before = std::chrono::system_clock::now();
    const auto now = CocoaClock().now();
    EXPECT_GE((now - before) / 1ms, -1);
    EXPECT_LE((now - std::chrono::system_clock::now()) / 1ms, 1);
}

TEST(UserDefaultsTest, ReadsTheLaunchArguments) {
    NSUserDefaults* defaults = [NSUserDefaults standardUserDefaults];
    NSDictionary* before = [[[defaults volatileDomainForName:NSArgumentDomain] copy] autorelease];
    NSDictionary* given =
        [NSDictionary dictionaryWithObjectsAndKeys:@"/Live %@.app", @"liveapp", nil];
    [defaults removeVolatileDomainForName:NSArgumentDomain];
    [defaults setVolatileDomain:given forName:NSArgumentDomain];

    const auto suite = CocoaUserDefaultsSuites().open(argumentDomain);
    const auto liveApp = suite->objectForKey("liveapp");
    const auto missing = suite->objectForKey("app");

    [defaults removeVolatileDomainForName:NSArgumentDomain];
    [defaults setVolatileDomain:before forName:NSArgumentDomain];

    ASSERT_NE(liveApp, nullptr);
    EXPECT_EQ(liveApp->text(), "/Live %@.app");
    EXPECT_EQ(missing, nullptr);
}

}  // namespace

}  // namespace morvella::cocoa_tests
