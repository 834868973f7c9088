#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "live/live_version.hpp"
#include "platform/cocoa/conversions.h"
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

TEST(KnownDifferencesOfGnustepTest, TwoSlashesAfterTheRootStay) {
    EXPECT_EQ(textOf([@"/" stringByAppendingPathComponent:@"//b"]), "//b");
    EXPECT_EQ(appendingPathComponent("/", "//b"), "/b");
}

}  // namespace

}  // namespace morvella
