// Every test that runs on the complement exercises it. This file covers only faults that would let
// another test pass when it should fail.

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "cocoa/temporary_folder.hpp"

namespace morvella::gnustep_tests {

namespace {

std::string text(NSString* string) {
    return string ? [string UTF8String] : "(nil)";
}

/// The standard folder of this kind that all users share.
NSURL* localFolder(NSSearchPathDirectory directory) {
    return [[NSFileManager defaultManager] URLForDirectory:directory
                                                  inDomain:NSLocalDomainMask
                                         appropriateForURL:nil
                                                    create:NO
                                                     error:NULL];
}

TEST(ComplementTest, StandardFoldersAreOnTheStageOrMissing) {
    setenv("MORVELLA_STAGE", "/a stage", 1);
    EXPECT_EQ(text([localFolder(NSApplicationDirectory) path]), "/a stage/Applications");
    EXPECT_EQ(text([localFolder(NSUserDirectory) path]), "/a stage/Users");
    setenv("MORVELLA_STAGE", "", 1);
    EXPECT_EQ(localFolder(NSUserDirectory), nil);
    unsetenv("MORVELLA_STAGE");
    EXPECT_EQ(localFolder(NSApplicationDirectory), nil);
}

TEST(ComplementTest, StoresNothingInAnyHomeFolder) {
    EXPECT_EQ(text(NSHomeDirectory()), std::getenv("HOME"));
    EXPECT_EQ(text(GSDefaultsRootForUser(NSUserName())), "/dev/null");
    NSArray* libraries =
        NSSearchPathForDirectoriesInDomains(NSLibraryDirectory, NSUserDomainMask, YES);
    EXPECT_EQ(text([libraries objectAtIndex:0]), "/dev/null");
    const char* caches = std::getenv("XDG_CACHE_HOME");
    ASSERT_NE(caches, nullptr);
    EXPECT_NE(std::string(caches).substr(0, text(NSHomeDirectory()).size()),
              text(NSHomeDirectory()));
}

TEST(ComplementTest, DefaultsSuiteHasItsOwnFileInTheHomeFolder) {
    const auto suite = [](NSString* name) {
        return [[[NSUserDefaults alloc] initWithSuiteName:name] autorelease];
    };
    const std::filesystem::path file =
        text(NSHomeDirectory()) + "/Library/Preferences/com.example.one.plist";
    [suite(@"com.example.one") setValue:@"ü 🎹 %@" forKey:@"key"];
    EXPECT_EQ(text([suite(@"com.example.one") valueForKey:@"key"]), "ü 🎹 %@");
    EXPECT_EQ([suite(@"com.example.two") valueForKey:@"key"], nil);
    EXPECT_TRUE(std::filesystem::exists(file));
    [suite(@"com.example.one") setValue:nil forKey:@"key"];
    EXPECT_EQ([suite(@"com.example.one") objectForKey:@"key"], nil);
    std::filesystem::remove(file);
}

TEST(ComplementTest, SignalsThatTheInstallerSurvivesKillItsChildren) {
    for (const int number : {SIGPIPE, SIGXFSZ}) {
        NSTask* task = [[[NSTask alloc] init] autorelease];
        [task setLaunchPath:@"/bin/sh"];
        NSString* script = [NSString stringWithFormat:@"ulimit -c 0; kill -%d $$", number];
        [task setArguments:@[ @"-c", script ]];
        [task launch];
        [task waitUntilExit];
        EXPECT_EQ([task terminationStatus], number);
    }
}

}  // namespace

}  // namespace morvella::gnustep_tests
