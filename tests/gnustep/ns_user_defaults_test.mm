#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "gnustep/texts.hpp"

namespace morvella::gnustep_tests {

namespace {

namespace fs = std::filesystem;

NSUserDefaults* suite(NSString* name) {
    return [[[NSUserDefaults alloc] initWithSuiteName:name] autorelease];
}

class SuiteTest : public ::testing::Test {
  protected:
    SuiteTest() { fs::remove_all(preferences()); }
    ~SuiteTest() override { fs::remove_all(preferences()); }

    static fs::path preferences() { return fs::path(std::getenv("HOME")) / "Library/Preferences"; }
};

TEST_F(SuiteTest, KeepsValuesInAFileOfItsOwn) {
    [suite(@"com.example.one") setValue:@"u\u0308 🎹 %@" forKey:@"key"];
    EXPECT_EQ(text([suite(@"com.example.one") valueForKey:@"key"]), "u\u0308 🎹 %@");
    EXPECT_EQ(text([suite(@"com.example.one") objectForKey:@"key"]), "u\u0308 🎹 %@");
    EXPECT_EQ([suite(@"com.example.one") valueForKey:@"other"], nil);
    EXPECT_EQ([suite(@"com.example.two") valueForKey:@"key"], nil);
    EXPECT_EQ([[NSUserDefaults standardUserDefaults] objectForKey:@"key"], nil);
    EXPECT_TRUE(fs::exists(preferences() / "com.example.one.plist"));
    EXPECT_FALSE(fs::exists(preferences() / "com.example.two.plist"));
}

TEST_F(SuiteTest, ForgetsAValueThatIsSetToNil) {
    [suite(@"com.example.one") setValue:@"1" forKey:@"key"];
    [suite(@"com.example.one") setValue:@"2" forKey:@"other"];
    [suite(@"com.example.one") setValue:nil forKey:@"key"];
    EXPECT_EQ([suite(@"com.example.one") valueForKey:@"key"], nil);
    EXPECT_EQ(text([suite(@"com.example.one") valueForKey:@"other"]), "2");
}

TEST_F(SuiteTest, IsEmptyIfItsFileIsDamaged) {
    fs::create_directories(preferences());
    std::ofstream(preferences() / "com.example.one.plist") << "<plist><dict><key>";
    EXPECT_EQ([suite(@"com.example.one") valueForKey:@"key"], nil);
}

TEST_F(SuiteTest, LeavesTheLaunchArgumentsAsTheyAre) {
    [suite(NSArgumentDomain) setValue:@"changed" forKey:@"liveapp"];
    EXPECT_EQ([suite(NSArgumentDomain) valueForKey:@"liveapp"], nil);
    EXPECT_FALSE(fs::exists(preferences()));
}

}  // namespace

}  // namespace morvella::gnustep_tests
