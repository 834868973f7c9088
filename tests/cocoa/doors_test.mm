#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#import "app/MorvellaInstallerAppDelegate.h"
#import "platform/cocoa/MorvellaInstallerLicenseVC.h"
#import "platform/cocoa/MorvellaInstallerViewController.h"

/// Stands for any control. Counts how many of it there are.
@interface StubControl : NSObject
+ (int)living;
- (void)setUsesThreadedAnimation:(BOOL)threaded;
@end

@implementation StubControl

static int living = 0;

+ (int)living {
    return living;
}

- (instancetype)init {
    self = [super init];
    ++living;
    return self;
}

- (void)dealloc {
    --living;
    [super dealloc];
}

- (void)setUsesThreadedAnimation:(BOOL)threaded {
}

@end

namespace {

NSArray* outlets() {
    return @[
        @"initialView", @"welcomeView", @"welcomeVersionString", @"welcomeBetaString",
        @"licenseView", @"licenseText", @"settingsView", @"settingsIndicator", @"settingsInfoText",
        @"settingsUserLibLabel", @"settingsNextButton", @"doInstallView", @"doInstallIndicator",
        @"postInstallView", @"postInstallOpenDemoSetCheck"
    ];
}

/// Connects every outlet to a stub of its own, which nobody else holds.
void connect(id door, NSArray* names) {
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    for (NSString* name in names) {
        StubControl* stub = [[StubControl alloc] init];
        [door setValue:stub forKey:name];
        EXPECT_EQ([door valueForKey:name], stub) << [name UTF8String];
        [stub release];
    }
    [pool release];
}

/// How many different objects the outlets hold.
size_t differentObjects(id door, NSArray* names) {
    NSMutableSet* held = [NSMutableSet set];
    for (NSString* name in names) {
        [held addObject:[NSValue valueWithNonretainedObject:[door valueForKey:name]]];
    }
    return [held count];
}

TEST(DoorsTest, OutletsAreHeldApartAndLetGoOfWithTheDoor) {
    ASSERT_EQ([StubControl living], 0);
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    MorvellaInstallerViewController* door =
        [[MorvellaInstallerViewController alloc] initWithNibName:nil bundle:nil];
    for (NSString* name in outlets()) {
        EXPECT_EQ([door valueForKey:name], nil) << [name UTF8String];
    }
    connect(door, outlets());
    EXPECT_EQ(differentObjects(door, outlets()), 15U);
    EXPECT_EQ([StubControl living], 15);
    [door release];
    [pool release];
    EXPECT_EQ([StubControl living], 0);
}

TEST(DoorsTest, OutletsOfTheLicenceControllerAreHeldApartAndLetGoOfWithIt) {
    ASSERT_EQ([StubControl living], 0);
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    MorvellaInstallerLicenseVC* door = [[MorvellaInstallerLicenseVC alloc] initWithNibName:nil
                                                                                    bundle:nil];
    NSArray* names = @[ @"licenseView", @"licenseText" ];
    connect(door, names);
    EXPECT_EQ(differentObjects(door, names), 2U);
    EXPECT_EQ([StubControl living], 2);
    [door release];
    [pool release];
    EXPECT_EQ([StubControl living], 0);
}

TEST(DoorsTest, StateIsReadAndWrittenInFoundationsTypes) {
    MorvellaInstallerViewController* door =
        [[[MorvellaInstallerViewController alloc] initWithNibName:nil bundle:nil] autorelease];
    EXPECT_EQ([door liveAppPath], nil);
    EXPECT_EQ([door userLibPath], nil);
    EXPECT_EQ([door demoSetPath], nil);
    EXPECT_EQ([door destinationURL], nil);
    EXPECT_EQ([door resourcesLoaded], 0);
    NSURL* destination = [NSURL fileURLWithPath:@"/a b/Morvella" isDirectory:YES];
    [door setLiveAppPath:@"/Live.app"];
    [door setUserLibPath:@"/Library 100%"];
    [door setDemoSetPath:@"/Demo.als"];
    [door setDestinationURL:destination];
    [door setResourcesLoaded:YES];
    EXPECT_TRUE([[door liveAppPath] isEqual:@"/Live.app"]);
    EXPECT_TRUE([[door userLibPath] isEqual:@"/Library 100%"]);
    EXPECT_TRUE([[door demoSetPath] isEqual:@"/Demo.als"]);
    EXPECT_TRUE([[door destinationURL] isEqual:destination]);
    EXPECT_EQ([door resourcesLoaded], 1);
    [door setLiveAppPath:nil];
    [door setDestinationURL:nil];
    EXPECT_EQ([door liveAppPath], nil);
    EXPECT_EQ([door destinationURL], nil);
}

TEST(DoorsTest, DelegateQuitsWithTheLastWindowAndDoesNothingElse) {
    MorvellaInstallerAppDelegate* delegate =
        [[[MorvellaInstallerAppDelegate alloc] init] autorelease];
    // Neither the application nor the notification is looked at.
    const id anything = [[[NSObject alloc] init] autorelease];
    EXPECT_TRUE([delegate applicationShouldTerminateAfterLastWindowClosed:anything]);
    [delegate applicationDidFinishLaunching:anything];
    [delegate applicationWillTerminate:anything];
}

}  // namespace
