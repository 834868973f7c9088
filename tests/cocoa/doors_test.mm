#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#import "app/MorvellaInstallerAppDelegate.h"
#import "platform/cocoa/MorvellaInstallerLicenseVC.h"
#import "platform/cocoa/MorvellaInstallerViewController.h"

#include "cocoa/recorder.h"

using namespace morvella::cocoa_tests;

namespace {

/// Expects each property to hold its own value and accept nil, and an outlet to be retained.
void expectProperties(Class door, NSArray* outlets, NSDictionary* texts) {
    NSMutableDictionary* values = [NSMutableDictionary dictionaryWithDictionary:texts];
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    const id made = [[[door alloc] initWithNibName:nil bundle:nil] autorelease];
    for (NSString* name in outlets) {
        [values setObject:[Recorder named:"outlet" replacing:[NSProgressIndicator class]]
                   forKey:name];
    }
    for (NSString* name in values) {
        EXPECT_EQ([made valueForKey:name], nil) << [name UTF8String];
    }
    [made setValuesForKeysWithDictionary:values];
    for (NSString* name in values) {
        EXPECT_TRUE([[made valueForKey:name] isEqual:[values objectForKey:name]])
            << [name UTF8String];
    }
    for (NSString* name in values) {
        [made setValue:nil forKey:name];
        EXPECT_EQ([made valueForKey:name], nil) << [name UTF8String];
    }
    [made setValue:[Recorder named:"retained" replacing:[NSView class]] forKey:@"licenseView"];
    [made retain];
    [pool release];
    EXPECT_EQ([Recorder livingNamed:"retained"], 1);
    pool = [[NSAutoreleasePool alloc] init];
    [made valueForKey:@"licenseView"];
    [made release];
    EXPECT_EQ([Recorder livingNamed:"retained"], 1) << "what a getter returned lives on";
    [pool release];
    EXPECT_EQ([Recorder livingNamed:"retained"], 0);
}

TEST(DoorsTest, HoldTheirOutletsAndTheState) {
    expectProperties(
        [MorvellaInstallerViewController class],
        @[
            @"initialView", @"welcomeView", @"welcomeVersionString", @"welcomeBetaString",
            @"licenseView", @"licenseText", @"settingsView", @"settingsIndicator",
            @"settingsInfoText", @"settingsUserLibLabel", @"settingsNextButton", @"doInstallView",
            @"doInstallIndicator", @"postInstallView", @"postInstallOpenDemoSetCheck"
        ],
        @{
            @"liveAppPath" : @"/Live.app",
            @"userLibPath" : @"/Library 100%",
            @"demoSetPath" : @"/Demo.als",
            @"destinationURL" : [NSURL fileURLWithPath:@"/a b/Morvella" isDirectory:YES]
        });
    expectProperties([MorvellaInstallerLicenseVC class], @[ @"licenseView", @"licenseText" ], @{});
}

TEST(DoorsTest, ResourcesLoadedIsABoolean) {
    MorvellaInstallerViewController* door =
        [[[MorvellaInstallerViewController alloc] initWithNibName:nil bundle:nil] autorelease];
    EXPECT_EQ([door resourcesLoaded], 0);
    [door setResourcesLoaded:YES];
    EXPECT_EQ([door resourcesLoaded], 1);
}

TEST(DoorsTest, DelegateQuitsAfterTheLastWindowCloses) {
    MorvellaInstallerAppDelegate* delegate =
        [[[MorvellaInstallerAppDelegate alloc] init] autorelease];
    const id application = [Recorder named:"application" replacing:[NSApplication class]];
    EXPECT_TRUE([delegate applicationShouldTerminateAfterLastWindowClosed:application]);
}

}  // namespace
