#include "cocoa/door_fixture.h"

#import "platform/cocoa/MorvellaInstallerLicenseVC.h"

#include "cocoa/temporary_folder.hpp"
#include "cocoa/turn.h"
#include "platform/cocoa/guard.h"

using namespace morvella::cocoa_tests;

namespace {

TEST_F(DoorLifeCycleTest, BothControllersLoadOnceWhenTheirOutletsAreConnected) {
    expectLoadedOnce(door);
    MorvellaInstallerLicenseVC* licence =
        [[[MorvellaInstallerLicenseVC alloc] initWithNibName:nil bundle:nil] autorelease];
    [licence setLicenseView:static_cast<id>([Recorder named:"text view"
                                                standingFor:[NSTextView class]])];
    expectLoadedOnce(licence);
}

TEST_F(DoorLifeCycleTest, StartsTheFirstPageWhenTheWindowIsOnTheScreen) {
    [door viewDidAppear];
    [door awakeFromNib];
    [door viewDidAppear];
    EXPECT_EQ(steps(), (Lines{"awakeFromNib", "window center", "viewDidLoad", "sidebar shows steps",
                              "after 0 s: windowIsOnScreen"}));
    disturbed = door;
    [door windowIsOnScreen];
    EXPECT_EQ(steps(), (Lines{"application activateIgnoringOtherApps: YES",
                              "application requestUserAttention: 10", "start",
                              "sidebar shows steps", "window displayIfNeeded", "flush",
                              "screenChanged", "window makeKeyAndOrderFront: door", "sheet begins",
                              "application requestUserAttention: 0"}));
    [door viewDidAppear];
    EXPECT_EQ(steps(), Lines{}) << "the window came back";
}

TEST_F(DoorLifeCycleTest, ShowsAndDrawsAPageBeforeItsWorkStarts) {
    start();
    disturbed = door;
    [door licenseAcceptedButton:nil];
    EXPECT_EQ(steps(), (Lines{"window setInitialFirstResponder: " + describe(settings),
                              "window makeFirstResponder: nil", "sidebar shows steps",
                              "window displayIfNeeded", "flush", "screenChanged",
                              "window makeKeyAndOrderFront: door", "sheet begins",
                              "application requestUserAttention: 0"}));
    EXPECT_EQ([initial superview], nil);
    EXPECT_NE([settings superview], nil);
    EXPECT_TRUE(NSEqualRects([settings frame], NSMakeRect(1, 2, 3, 4)));
    [door viewDidAppear];
    [door setView:settings];
    EXPECT_EQ(steps(), Lines{}) << "the page's work has started";
}

TEST_F(DoorLifeCycleTest, CountsPressesForASheetWhenAPageIsDrawnBehindIt) {
    start();
    [window answer:@"a sheet" to:@selector(attachedSheet)];
    [door licenseAcceptedButton:nil];
    EXPECT_EQ(times("screenChanged"), 0);
}

TEST_F(DoorLifeCycleTest, StartsNoPageThatNoWindowShows) {
    start();
    [initial removeFromSuperview];
    takeRecorded();
    [door setView:settings];
    EXPECT_EQ([door view], settings);
    EXPECT_EQ(steps(), Lines{});
}

TEST_F(DoorLifeCycleTest, ReportsWhatFailsWithoutAWindowInAWindowOfItsOwn) {
    start();
    [initial removeFromSuperview];
    takeRecorded();
    // It does not understand a check box's messages.
    [door setPostInstallOpenDemoSetCheck:static_cast<id>([[[NSObject alloc] init] autorelease])];
    [door installDoneButton:nil];
    EXPECT_EQ(steps(), (Lines{"application requestUserAttention: 0"}));
    EXPECT_TRUE(turnUntil([] { return times("application terminate: door") == 1; }));
}

TEST_F(DoorLifeCycleTest, ReportsPagesThatCannotBeShownAndStartsLaterOnes) {
    start();
    pageChangeRaises = true;
    [door welcomeButton:nil];
    [door licenseAcceptedButton:nil];
    [door beginInstallButton:nil];
    EXPECT_EQ(times("sheet begins"), 3);
    pageChangeRaises = false;
    [door licenseAcceptedButton:nil];
    EXPECT_EQ([door view], settings);
    EXPECT_EQ(times("sheet begins"), 1);
}

TEST_F(DoorLifeCycleTest, SheetKeepsTheDoorAliveAndQuitsInItsName) {
    const int before = doorsAlive;
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    [makeDoor() windowIsOnScreen];
    [pool release];
    EXPECT_EQ(doorsAlive, before + 1);
    takeRecorded();
    pool = [[NSAutoreleasePool alloc] init];
    answer(NSAlertFirstButtonReturn);
    EXPECT_EQ(times("application terminate: door"), 1);
    forgetSheet();
    [pool release];
    EXPECT_EQ(doorsAlive, before);
}

TEST_F(DoorLifeCycleTest, AnimatesIndicatorsInItsOwnName) {
    const TemporaryFolder library;
    library.addFolder("Morvella");
    const Answering making([NSProgressIndicator class], @selector(alloc),
                           [Recorder named:"backup" standingFor:[NSProgressIndicator class]]);
    // The archiver does nothing.
    const Answering tasks([NSTask class], @selector(alloc), nil);
    const Answering pipes([NSPipe class], @selector(pipe), nil);
    Recorder* checkBox = [Recorder named:"check box" standingFor:[NSButton class]];
    [checkBox answer:@(NSControlStateValueOn) to:@selector(state)];
    [sheet answer:checkBox to:@selector(suppressionButton)];
    start();
    [door setUserLibPath:@(library.path().c_str())];
    [door beginInstallButton:nil];
    takeRecorded();
    answer(NSAlertFirstButtonReturn);
    const Lines lines = takeRecorded();
    EXPECT_EQ(times("backup startAnimation: door", lines), 1);
    EXPECT_EQ(times("backup stopAnimation: door", lines), 1);
    // Without a destination nothing is installed.
    [door setDestinationURL:nil];
    EXPECT_TRUE(turnUntil([] { return times("sheet begins") == 1; }));
}

TEST_F(DoorLifeCycleTest, OnlyTheNewestDoorHandlesExceptions) {
    const auto raiseAndRelease = [](id retained) {
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        [retained release];
        morvella::guarded([] { [NSException raise:@"StubException" format:@"on purpose"]; });
        forgetSheet();
        [pool release];
    };
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    TestDoor* older = [makeDoor() retain];
    TestDoor* newest = [makeDoor() retain];
    [pool release];
    raiseAndRelease(older);
    EXPECT_EQ(steps(), (Lines{"window makeKeyAndOrderFront: door", "sheet begins",
                              "application requestUserAttention: 0"}));
    raiseAndRelease(newest);
    EXPECT_EQ(steps(), (Lines{"application terminate: nil"}));
}

id anotherInstance(id door, SEL) {
    id another = [[door class] alloc];
    [door release];
    return another;
}

TEST_F(DoorLifeCycleTest, BothControllersAreMadeInEitherWay) {
    const Replaced coding([NSViewController class], @selector(initWithCoder:), anotherInstance,
                          "@@:@");
    const Replaced naming([NSViewController class], @selector(initWithNibName:bundle:),
                          anotherInstance, "@@:@@");
    for (Class one :
         {[MorvellaInstallerViewController class], [MorvellaInstallerLicenseVC class]}) {
        EXPECT_EQ([[[[one alloc] initWithCoder:nil] autorelease] licenseView], nil);
        EXPECT_EQ([[[[one alloc] initWithNibName:nil bundle:nil] autorelease] licenseView], nil);
    }
}

}  // namespace
