#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "live/live_version.hpp"
#include "platform/cocoa/conversions.h"
#include "platform/cocoa/system.h"
#include "platform/paths.hpp"

/// Where GNUstep's Foundation differs from Apple's, which the core follows. A test that fails here
/// says that GNUstep has caught up.
namespace morvella {

namespace {

TEST(KnownDifferencesOfGnustepTest, IntegersDoNotSaturate) {
    EXPECT_NE([@"2147483648" intValue], 2147483647);
    EXPECT_NE([@"-2147483649" intValue], -2147483647 - 1);
    EXPECT_EQ(intValue("2147483648"), 2147483647);
    EXPECT_EQ(intValue("-2147483649"), -2147483647 - 1);
}

TEST(KnownDifferencesOfGnustepTest, LineAndParagraphSeparatorAreNoNewlines) {
    EXPECT_FALSE([[NSCharacterSet newlineCharacterSet] characterIsMember:0x2028]);
    EXPECT_FALSE([[NSCharacterSet newlineCharacterSet] characterIsMember:0x2029]);
}

TEST(KnownDifferencesOfGnustepTest, WhiteSpaceBeforeAnIntegerIsOnlyAsciis) {
    EXPECT_EQ([@"\u00A05" intValue], 0);
    EXPECT_EQ([@"\u20035" intValue], 0);
    EXPECT_EQ([@"\u30005" intValue], 0);
    EXPECT_EQ(intValue("\xC2\xA0"
                       "5"),
              5);
    EXPECT_EQ(intValue("\xE2\x80\x83"
                       "5"),
              5);
    EXPECT_EQ(intValue("\xE3\x80\x80"
                       "5"),
              5);
}

TEST(KnownDifferencesOfGnustepTest, AnExtensionMayHoldABlank) {
    EXPECT_EQ(textOf([@"x.a b" pathExtension]), "a b");
    EXPECT_EQ(pathExtension("x.a b"), "");
}

/// What Apple's hands to the disk or to a child is decomposed.
TEST(KnownDifferencesOfGnustepTest, ComposedNamesStayComposed) {
    const std::string composed = "/\xC3\xBC";
    EXPECT_EQ(textOf([[NSURL fileURLWithPath:stringOf(composed) isDirectory:NO] path]), composed);
    const auto result = CocoaTaskRunner().run({.launchPath = "/bin/echo", .arguments = {composed}});
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->output, composed + "\n");
}

TEST(KnownDifferencesOfGnustepTest, TwoSlashesAfterTheRootStay) {
    EXPECT_EQ(textOf([@"/" stringByAppendingPathComponent:@"//b"]), "//b");
    EXPECT_EQ(appendingPathComponent("/", "//b"), "/b");
}

}  // namespace

}  // namespace morvella
