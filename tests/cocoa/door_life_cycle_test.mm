#import <AppKit/AppKit.h>
#include <Block.h>
#import <QuartzCore/QuartzCore.h>
#include <gtest/gtest.h>
#import <objc/runtime.h>

#import "platform/cocoa/MorvellaInstallerLicenseVC.h"
#import "platform/cocoa/MorvellaInstallerViewController.h"
#import "platform/cocoa/PressMonitor.h"

#include "app/steps.hpp"
#include "cocoa/recorder.h"
#include "cocoa/temporary_folder.hpp"
#include "cocoa/turn.h"
#include "platform/cocoa/guard.h"

#include <algorithm>
#include <list>
#include <utility>

using namespace morvella::cocoa_tests;

@interface MorvellaInstallerViewController (CalledByThePlatform)
- (void)windowIsOnScreen;
@end

namespace {

/// The door whose life-cycle methods are called at awkward moments, as AppKit may.
NSViewController* disturbed = nil;
bool pageChangeRaises = false;
int doorsAlive = 0;
id shownWindow = nil;
void (^answer)(NSModalResponse) = nil;

void forgetSheet() {
    if (answer) {
        Block_release(answer);
        answer = nil;
    }
}

}  // namespace

@interface TestDoor : MorvellaInstallerViewController
@end

@implementation TestDoor

- (NSString*)description {
    return @"door";
}

- (void)performSelector:(SEL)selector withObject:(id)object afterDelay:(NSTimeInterval)delay {
    record(std::string("after ") + std::to_string(int(delay)) + " s: " + sel_getName(selector));
}

- (void)dealloc {
    --doorsAlive;
    [super dealloc];
}

@end

/// Where the page lies in the window.
@interface TestPlace : NSView
@end

@implementation TestPlace

- (void)replaceSubview:(NSView*)shown with:(NSView*)page {
    if (pageChangeRaises) {
        [NSException raise:@"StubException" format:@"raised on purpose"];
    }
    [super replaceSubview:shown with:page];
    [disturbed viewDidAppear];
}

@end

@interface TestSheet : Recorder
@end

@implementation TestSheet

- (void)beginSheetModalForWindow:(NSWindow*)window
               completionHandler:(void (^)(NSModalResponse))handler {
    record("sheet begins");
    forgetSheet();
    answer = Block_copy(handler);
    [disturbed viewDidAppear];
}

@end

/// A bundle without resources, which is searched when a controller is loaded.
@interface TestBundle : Recorder
@end

@implementation TestBundle

- (NSURL*)URLForResource:(NSString*)name withExtension:(NSString*)extension {
    record("searches " + std::string([name UTF8String]));
    [disturbed viewDidLoad];
    return nil;
}

@end

@interface TestSidebar : NSObject
@end

@implementation TestSidebar

- (void)setSteps:(const std::vector<morvella::Step>&)steps {
    record("sidebar shows steps");
}

@end

namespace {

void recordCall(id, SEL method) {
    record(sel_getName(method));
}

id windowOfView(NSView* view, SEL) {
    return [view superview] ? shownWindow : nil;
}

id anotherInstance(id door, SEL) {
    id another = [[door class] alloc];
    [door release];
    return another;
}

/// A door with its pages in a window. The bundle has no resources: the initial page ends in a
/// sheet, and so does the settings page.
class DoorLifeCycleTest : public ::testing::Test {
  protected:
    DoorLifeCycleTest() {
        NSApp = static_cast<id>([Recorder named:"application" standingFor:[NSApplication class]]);
        shownWindow = window;
        for (const auto& [owner, method] : std::initializer_list<std::pair<Class, SEL>>{
                 {[NSViewController class], @selector(awakeFromNib)},
                 {[NSViewController class], @selector(viewDidLoad)},
                 {object_getClass([CATransaction class]), @selector(flush)},
                 {object_getClass([PressMonitor class]), @selector(start)},
                 {object_getClass([PressMonitor class]), @selector(screenChanged)}}) {
            replaced_.emplace_back(owner, method, recordCall, "v@:");
        }
        [place_ addSubview:initial];
        door = makeDoor();
    }
    ~DoorLifeCycleTest() override {
        NSApp = nil;
        shownWindow = nil;
        disturbed = nil;
        pageChangeRaises = false;
        forgetSheet();
    }

    TestDoor* makeDoor() {
        ++doorsAlive;
        TestDoor* made = [[[TestDoor alloc] initWithNibName:nil bundle:nil] autorelease];
        [made setInitialView:initial];
        [made setSettingsView:settings];
        [made setDoInstallView:installation];
        [made setValue:sidebar_ forKey:@"stepsSidebar"];
        [made setView:initial];
        takeRecorded();
        return made;
    }

    /// Loads the door and brings its window on the screen.
    void start() {
        [door awakeFromNib];
        [door windowIsOnScreen];
        takeRecorded();
    }

    /// What was recorded, apart from questions and resources.
    static Lines steps() {
        Lines lines = takeRecorded();
        std::erase_if(lines, [](const std::string& line) {
            return line.ends_with("attachedSheet") || line.ends_with("isActive") ||
                   line.ends_with("contentView") || line.starts_with("searches") ||
                   line.starts_with("sheet set") || line.starts_with("panel ") ||
                   line == "sheet init" || line == "sheet window" ||
                   line.starts_with("sheet addButton");
        });
        return lines;
    }
    static std::string describe(id object) { return [[object description] UTF8String]; }
    static long times(const std::string& line, const Lines& lines = takeRecorded()) {
        return std::ranges::count(lines, line);
    }

    /// Expects one load, however often the platform calls `viewDidLoad`.
    static void expectLoadedOnce(NSViewController* controller) {
        disturbed = controller;
        [controller viewDidLoad];
        EXPECT_EQ(takeRecorded(), Lines{"viewDidLoad"}) << "outlets are not connected yet";
        [controller awakeFromNib];
        [controller viewDidLoad];
        const Lines lines = takeRecorded();
        EXPECT_EQ(lines.front(), "awakeFromNib");
        EXPECT_EQ(times("searches license.rtf", lines), 1);
        EXPECT_GT(times("viewDidLoad", lines), 2);
    }

    Recorder* window = [Recorder named:"window" standingFor:[NSWindow class]];
    Recorder* sheet = [TestSheet named:"sheet" standingFor:[NSAlert class]];
    NSView* initial = [[[NSView alloc] initWithFrame:NSMakeRect(1, 2, 3, 4)] autorelease];
    NSView* settings = [[[NSView alloc] init] autorelease];
    NSView* installation = [[[NSView alloc] init] autorelease];
    TestDoor* door;

  private:
    std::list<Replaced> replaced_;
    Replaced windows_ { [NSView class], @selector(window), windowOfView, "@@:" };
    Answering mainBundle_ {
        [NSBundle class], @selector(mainBundle),
            [TestBundle named:"bundle" standingFor:[NSBundle class]]
    };
    Answering sheet_ { [NSAlert class], @selector(alloc), sheet };
    TestSidebar* sidebar_ = [[[TestSidebar alloc] init] autorelease];
    TestPlace* place_ = [[[TestPlace alloc] init] autorelease];
};

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
    // No check box: it understands nothing that one does.
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
