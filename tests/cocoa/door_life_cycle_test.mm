#include "cocoa/door_fixture.h"

#import "platform/cocoa/MorvellaInstallerLicenseVC.h"

#include "cocoa/temporary_folder.hpp"
#include "cocoa/turn.h"
#include "platform/cocoa/cocoa_platform.h"
#include "platform/cocoa/guard.h"

using namespace morvella::cocoa_tests;

/// The archiver. While it runs, the main queue, a timer and AppKit call back.
@interface TestTask : Recorder
@end

@implementation TestTask

- (void)waitUntilExit {
    morvella::RunLoop& runLoop = morvella::cocoaPlatform().runLoop;
    int calls = 0;
    runLoop.dispatchAsync([&] { ++calls; });
    runLoop.scheduleRepeatingTimer(0.001, [&](morvella::Timer& timer) {
        timer.invalidate();
        ++calls;
    });
    EXPECT_TRUE(turnUntil([&] { return calls == 2; }));
    [reentered viewDidAppear];
    record("archiver ended");
}

@end

namespace {

TEST_F(DoorLifeCycleTest, LoadsEachControllerOnceAfterItsOutletsAreConnected) {
    MorvellaInstallerLicenseVC* licence =
        [[[MorvellaInstallerLicenseVC alloc] initWithNibName:nil bundle:nil] autorelease];
    [licence setLicenseView:static_cast<id>([Recorder named:"text view"
                                                  replacing:[NSTextView class]])];
    for (NSViewController* controller :
         {static_cast<NSViewController*>(door), static_cast<NSViewController*>(licence)}) {
        reentered = controller;
        [controller viewDidLoad];
        EXPECT_EQ(takeRecorded(), Lines{"viewDidLoad"}) << "outlets are not connected yet";
        [controller awakeFromNib];
        [controller viewDidLoad];
        const Lines lines = takeRecorded();
        EXPECT_EQ(lines.front(), "awakeFromNib");
        EXPECT_EQ(times("searches license.rtf", lines), 1);
        EXPECT_GT(times("viewDidLoad", lines), 2);
    }
}

TEST_F(DoorLifeCycleTest, StartsTheFirstPageWhenTheWindowIsOnTheScreen) {
    [door viewDidAppear];
    [door awakeFromNib];
    [door viewDidAppear];
    EXPECT_EQ(steps(),
              (Lines{"awakeFromNib", "setAllowsAutomaticWindowTabbing:", "window center",
                     "viewDidLoad", "sidebar shows steps", "after 0 s: windowIsOnScreen"}));
    reentered = door;
    [door windowIsOnScreen];
    EXPECT_EQ(steps(), (Lines{"application activateIgnoringOtherApps: YES",
                              "application requestUserAttention: 10", "start",
                              "sidebar shows steps", "window displayIfNeeded", "flush",
                              "screenChanged", "window makeKeyAndOrderFront: door",
                              "sheet begins on window", "application requestUserAttention: 0"}));
    [door viewDidAppear];
    EXPECT_EQ(steps(), Lines{}) << "the window reappeared";
}

TEST_F(DoorLifeCycleTest, ShowsAndDrawsAPageBeforeItsWorkStarts) {
    start();
    reentered = door;
    [door licenseAcceptedButton:nil];
    const std::string page = [[settings description] UTF8String];
    EXPECT_EQ(steps(),
              (Lines{"window setInitialFirstResponder: " + page, "window makeFirstResponder: nil",
                     "sidebar shows steps", "window displayIfNeeded", "flush", "screenChanged",
                     "window makeKeyAndOrderFront: door", "sheet begins on window",
                     "application requestUserAttention: 0"}));
    EXPECT_EQ([initial superview], nil);
    EXPECT_NE([settings superview], nil);
    EXPECT_TRUE(NSEqualRects([settings frame], NSMakeRect(1, 2, 3, 4)));
    [door viewDidAppear];
    [door setView:settings];
    EXPECT_EQ(steps(), Lines{}) << "the page's work has already started";
}

TEST_F(DoorLifeCycleTest, StartsNoPageBeforeTheWindowIsOnTheScreen) {
    [door awakeFromNib];
    [door setView:settings];
    EXPECT_EQ(times("sheet begins on window"), 0);
    [door windowIsOnScreen];
    EXPECT_EQ(times("sheet begins on window"), 1);
}

TEST_F(DoorLifeCycleTest, KeepsPressesForASheetWhenAPageIsDrawnBehindIt) {
    start();
    [window answer:@"a sheet" to:@selector(attachedSheet)];
    [door licenseAcceptedButton:nil];
    EXPECT_EQ(times("screenChanged"), 0);
}

TEST_F(DoorLifeCycleTest, WithoutAWindowStartsNoPageAndReportsAFailureInAnAlertOrQuits) {
    start();
    [initial removeFromSuperview];
    takeRecorded();
    [door setView:settings];
    EXPECT_EQ([door view], settings);
    EXPECT_EQ(steps(), Lines{});
    // An object that understands neither a check box's messages nor a number's.
    const id stranger = [[[NSObject alloc] init] autorelease];
    [door setPostInstallOpenDemoSetCheck:stranger];
    for (const id response : std::initializer_list<id> { @(NSAlertFirstButtonReturn), stranger }) {
        [sheet answer:response to:@selector(runModal)];
        [door installDoneButton:nil];
        EXPECT_EQ(steps(), (Lines{"application requestUserAttention: 0"}));
        Lines lines;
        EXPECT_TRUE(turnUntil([&] {
            std::ranges::move(steps(), std::back_inserter(lines));
            return lines.size() > 1;
        }));
        EXPECT_EQ(lines.back(), response == stranger ? "application terminate: nil"
                                                     : "application terminate: door");
    }
}

TEST_F(DoorLifeCycleTest, ReportsExceptionsAtStartUp) {
    MorvellaInstallerLicenseVC* licence =
        [[[MorvellaInstallerLicenseVC alloc] initWithNibName:nil bundle:nil] autorelease];
    [licence setLicenseView:static_cast<id>([[[NSObject alloc] init] autorelease])];
    [licence awakeFromNib];
    pageChangeRaises = true;
    [door awakeFromNib];
    [door windowIsOnScreen];
    EXPECT_EQ(times("sheet begins on window"), 3);
}

TEST_F(DoorLifeCycleTest, ReportsPagesThatCannotBeShownAndStartsLaterOnes) {
    start();
    pageChangeRaises = true;
    [door welcomeButton:nil];
    [door licenseAcceptedButton:nil];
    [door beginInstallButton:nil];
    EXPECT_EQ(times("sheet begins on window"), 3);
    pageChangeRaises = false;
    [door licenseAcceptedButton:nil];
    EXPECT_EQ([door view], settings);
    EXPECT_EQ(times("sheet begins on window"), 1);
}

TEST_F(DoorLifeCycleTest, SheetRetainsTheDoorAndQuitsWithItAsTheSender) {
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    TestDoor* made = makeDoor();
    [made setDoInstallIndicator:static_cast<id>([Recorder named:"outlet"
                                                      replacing:[NSProgressIndicator class]])];
    [made windowIsOnScreen];
    [pool release];
    EXPECT_EQ([Recorder livingNamed:"outlet"], 1);
    takeRecorded();
    pool = [[NSAutoreleasePool alloc] init];
    answer(NSAlertFirstButtonReturn);
    EXPECT_EQ(times("application terminate: door"), 1);
    forgetSheet();
    [pool release];
    EXPECT_EQ([Recorder livingNamed:"outlet"], 0);
}

TEST_F(DoorLifeCycleTest, BacksUpOnceEvenIfThePlatformCallsAgain) {
    const TemporaryFolder library;
    library.addFolder("Morvella");
    const Answering making([NSProgressIndicator class], @selector(alloc),
                           [Recorder named:"backup" replacing:[NSProgressIndicator class]]);
    const Answering tasks([NSTask class], @selector(alloc),
                          [TestTask named:"task" replacing:[NSTask class]]);
    const Answering pipes([NSPipe class], @selector(pipe), nil);
    Recorder* checkBox = [Recorder named:"check box" replacing:[NSButton class]];
    [checkBox answer:@(NSControlStateValueOn) to:@selector(state)];
    [sheet answer:checkBox to:@selector(suppressionButton)];
    start();
    [door setUserLibPath:@(library.path().c_str())];
    [door setDestinationURL:nil];  // So that nothing is installed.
    reentered = door;
    [door beginInstallButton:nil];
    takeRecorded();
    answer(NSAlertFirstButtonReturn);
    EXPECT_TRUE(turnUntil([lines = Lines()]() mutable {
        std::ranges::move(takeRecorded(), std::back_inserter(lines));
        if (times("sheet begins on window", lines) < 1) {
            return false;
        }
        std::erase_if(lines, [](const std::string& line) {
            return !line.ends_with("Animation: door") && line != "archiver ended" &&
                   line != "sheet begins on window";
        });
        EXPECT_EQ(lines, (Lines{"backup startAnimation: door", "archiver ended",
                                "backup stopAnimation: door", "sheet begins on window"}));
        return true;
    }));
}

TEST_F(DoorLifeCycleTest, OnlyTheNewestDoorHandlesExceptions) {
    const auto releaseAndRaise = [](id retained) {
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
    releaseAndRaise(older);
    EXPECT_EQ(steps(), (Lines{"window makeKeyAndOrderFront: door", "sheet begins on window",
                              "application requestUserAttention: 0"}));
    releaseAndRaise(newest);
    EXPECT_EQ(steps(), (Lines{"application terminate: nil"}));
}

id anotherInstance(id door, SEL) {
    id another = [[door class] alloc];
    [door release];
    return another;
}

TEST_F(DoorLifeCycleTest, EachInitializerCreatesTheController) {
    const Replaced coding([NSViewController class], @selector(initWithCoder:), anotherInstance);
    const Replaced naming([NSViewController class], @selector(initWithNibName:bundle:),
                          anotherInstance);
    for (Class kind :
         {[MorvellaInstallerViewController class], [MorvellaInstallerLicenseVC class]}) {
        EXPECT_EQ([[[[kind alloc] initWithCoder:nil] autorelease] licenseView], nil);
        EXPECT_EQ([[[[kind alloc] initWithNibName:nil bundle:nil] autorelease] licenseView], nil);
    }
}

}  // namespace
