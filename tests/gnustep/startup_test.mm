#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "gnustep/texts.hpp"

namespace morvella::gnustep_tests {

namespace {

TEST(StartupTest, EndsWithoutAStage) {
    for (const char* stage : {"", "relative"}) {
        setenv("MORVELLA_STAGE", stage, 1);
        EXPECT_EXIT(NSApplicationMain(0, nullptr), ::testing::ExitedWithCode(2), "MORVELLA_STAGE");
    }
    unsetenv("MORVELLA_STAGE");
    EXPECT_EXIT(NSApplicationMain(0, nullptr), ::testing::ExitedWithCode(2), "MORVELLA_STAGE");
}

TEST(StartupTest, KeepsNoSettingsInAnyHome) {
    EXPECT_EQ(text(GSDefaultsRootForUser(NSUserName())), "/dev/null");
    NSArray* libraries =
        NSSearchPathForDirectoriesInDomains(NSLibraryDirectory, NSUserDomainMask, YES);
    EXPECT_EQ(text([libraries objectAtIndex:0]), "/dev/null");
}

TEST(StartupTest, HasTheHomeThatIsSet) {
    EXPECT_EQ(text(NSHomeDirectory()), std::getenv("HOME"));
    EXPECT_EQ(text([@"~/x" stringByExpandingTildeInPath]), std::getenv("HOME") + std::string("/x"));
}

TEST(StartupTest, TakesABackslashForALetter) {
    EXPECT_EQ(text([@"/a\\b/c\\d" lastPathComponent]), "c\\d");
    EXPECT_EQ(text([@"/a" stringByAppendingPathComponent:@"C:\\b"]), "/a/C:\\b");
}

TEST(StartupTest, GivesChildrenTheEnvironmentAsItIs) {
    setenv("MORVELLA_TEST", "a=ü", 1);
    EXPECT_EQ(text([[[NSProcessInfo processInfo] environment] objectForKey:@"MORVELLA_TEST"]),
              "a=ü");
    unsetenv("MORVELLA_TEST");
    EXPECT_EQ([[[NSProcessInfo processInfo] environment] objectForKey:@"MORVELLA_TEST"], nil);
}

}  // namespace

}  // namespace morvella::gnustep_tests
