#include "cocoa/door_life_cycle.h"

#import <objc/runtime.h>

#import "platform/cocoa/MorvellaInstallerLicenseVC.h"

#include <algorithm>
#include <initializer_list>

#include "platform/cocoa/guard.h"

/// Tells the door that its view is loaded while the door fills it.
@interface LoadingTextView : Recorder {
  @public
    NSViewController* door;
}
@end

@implementation LoadingTextView

- (NSTextStorage*)textStorage {
    [door viewDidLoad];
    return nil;
}

@end

using namespace morvella::cocoa_tests;

namespace {

TEST_F(DoorLifeCycleTest, IsLoadedOnceHoweverOftenThePlatformSays) {
    [door viewDidLoad];
    EXPECT_EQ(timesLoaded(), 0) << "outlets are not connected yet";
    [door awakeFromNib];
    EXPECT_EQ(timesLoaded(), 1);
    [door viewDidLoad];
    [door viewDidLoad];
    EXPECT_EQ(timesLoaded(), 1);
    EXPECT_EQ(times("super awakeFromNib"), 1);
    EXPECT_EQ(times("super viewDidLoad"), 4);
}

TEST_F(DoorLifeCycleTest, CallsWhatItInheritsBeforeItsOwnWork) {
    const std::string work = "bundle URLForResource:withExtension: license.rtf nil";
    MorvellaInstallerLicenseVC* licence =
        [[[MorvellaInstallerLicenseVC alloc] initWithNibName:nil bundle:nil] autorelease];
    [licence setLicenseView:static_cast<id>(text)];
    for (NSViewController* each : std::initializer_list<NSViewController*>{door, licence}) {
        takeNews();
        [each awakeFromNib];
        const Lines& lines = news();
        ASSERT_GE(lines.size(), 3U);
        EXPECT_EQ(lines.front(), "super awakeFromNib");
        EXPECT_LT(std::find(lines.begin(), lines.end(), "super viewDidLoad"),
                  std::find(lines.begin(), lines.end(), work));
    }
}

TEST_F(DoorLifeCycleTest, StartsNoWorkBeforeTheWindowIsOnTheScreen) {
    [door viewDidAppear];
    [door awakeFromNib];
    [door viewDidAppear];
    EXPECT_EQ(timesDispatched(), 0);
    [door windowIsOnScreen];
    EXPECT_EQ(timesDispatched(), 1);
}

TEST_F(DoorLifeCycleTest, StartsThePagesWorkOnceWhenTheWindowComesBack) {
    start();
    [door viewDidAppear];
    [door viewDidAppear];
    EXPECT_EQ(timesDispatched(), 0);
    EXPECT_EQ(times("super viewDidAppear"), 0);
}

TEST_F(DoorLifeCycleTest, ShowsAndDrawsAPageBeforeItsWorkStarts) {
    start();
    disturb();
    [door setView:static_cast<id>(settings)];
    Lines order;
    for (const std::string& line : news()) {
        for (const char* step : {"super setView:", "settings page setFrame:", "place",
                                 "window makeFirstResponder:", "sidebar", "window displayIfNeeded",
                                 "transaction", "presses", "sheet begins"}) {
            if (line.starts_with(step)) {
                order.push_back(line);
            }
        }
    }
    EXPECT_EQ(order,
              (Lines{"super setView: settings page", "settings page setFrame: structure",
                     "place shows settings page", "window makeFirstResponder: nil",
                     "sidebar marks User Library", "window displayIfNeeded", "transaction flush",
                     "presses from before do not count", "sheet begins"}));
    takeNews();
    [door viewDidAppear];
    EXPECT_EQ(timesDispatched(), 0);
    EXPECT_EQ(timesLoaded(), 0);
}

TEST_F(DoorLifeCycleTest, StartsThePagesWorkOnceIfThePlatformSaysItAppearedMeanwhile) {
    start();
    disturbWork();
    [door setView:static_cast<id>(settings)];
    EXPECT_EQ(timesDispatched(), 1);
}

TEST_F(DoorLifeCycleTest, MakesTheFirstControlOfAPageTheFirstResponder) {
    start();
    [settings answer:[Recorder named:"button" standingFor:[NSButton class]]
                  to:@selector(nextValidKeyView)];
    [door setView:static_cast<id>(settings)];
    EXPECT_EQ(times("window makeFirstResponder: button"), 1);
}

TEST_F(DoorLifeCycleTest, AsksForASheetOverThePageOnceThePageIsDrawn) {
    start();
    [door setView:static_cast<id>(settings)];
    const Lines& lines = news();
    const auto drawn = std::find(lines.begin(), lines.end(), "window displayIfNeeded");
    EXPECT_NE(std::find(drawn, lines.end(), "window attachedSheet"), lines.end());
}

TEST_F(DoorLifeCycleTest, HoldsAViewThatNoWindowShows) {
    hide();
    [door awakeFromNib];
    [door setView:static_cast<id>(settings)];
    EXPECT_EQ([door view], static_cast<id>(settings));
    EXPECT_EQ(timesDispatched(), 0);
    EXPECT_EQ(times("place shows"), 0);
}

TEST_F(DoorLifeCycleTest, BringsItsWindowToTheMiddleAndInFrontOfOtherApplications) {
    [door awakeFromNib];
    EXPECT_EQ(times("window center"), 1);
    EXPECT_EQ(times("sidebar marks Welcome"), 1);
    EXPECT_EQ(times("put off: windowIsOnScreen 0.000000"), 1);
    EXPECT_EQ(times("application"), 0);
    EXPECT_EQ(times("presses"), 0);
    [door windowIsOnScreen];
    EXPECT_EQ(times("application activateIgnoringOtherApps: YES"), 1);
    EXPECT_EQ(times("presses are watched"), 1);
}

TEST_F(DoorLifeCycleTest, WatchesPressesBeforeTheFirstPageIsDrawn) {
    [door awakeFromNib];
    const auto at = [this](const std::string& line) {
        return std::find(news().begin(), news().end(), line);
    };
    EXPECT_LT(at("bundle URLForResource:withExtension: license.rtf nil"),
              at("sidebar marks Welcome"));
    takeNews();
    [door windowIsOnScreen];
    Lines order = news();
    order.erase(std::find(order.begin(), order.end(), "sheet begins") + 1, order.end());
    std::erase_if(order, [](const std::string& line) {
        return !line.starts_with("presses") && !line.starts_with("window display") &&
               !line.starts_with("sheet begins");
    });
    EXPECT_EQ(order, (Lines{"presses are watched", "window displayIfNeeded",
                            "presses from before do not count", "sheet begins"}));
}

TEST_F(DoorLifeCycleTest, IsLoadedOnceEvenIfThePlatformSaysSoMeanwhile) {
    LoadingTextView* loading =
        static_cast<LoadingTextView*>([LoadingTextView named:"loading text view"
                                                 standingFor:[NSTextView class]]);
    loading->door = door;
    [door setLicenseText:static_cast<id>(loading)];
    [door awakeFromNib];
    EXPECT_EQ(timesLoaded(), 1);
    EXPECT_GT(times("super viewDidLoad"), 1);

    MorvellaInstallerLicenseVC* licence =
        [[[MorvellaInstallerLicenseVC alloc] initWithNibName:nil bundle:nil] autorelease];
    loading->door = licence;
    [licence setLicenseView:static_cast<id>(loading)];
    takeNews();
    [licence awakeFromNib];
    EXPECT_EQ(timesLoaded(), 1);
}

TEST_F(DoorLifeCycleTest, APageThatCannotBeShownEndsInASheet) {
    start();
    raise();
    [door welcomeButton:nil];
    EXPECT_EQ(timesDispatched(), 1);
    [door licenseAcceptedButton:nil];
    EXPECT_EQ(timesDispatched(), 2);
    [door beginInstallButton:nil];
    EXPECT_EQ(timesDispatched(), 3);
}

TEST_F(DoorLifeCycleTest, WithoutADoorAnExceptionEndsTheApplication) {
    const auto raising = [] { [NSException raise:@"StubException" format:@"on purpose"]; };
    morvella::guarded(raising);
    EXPECT_EQ(timesDispatched(), 1);
    EXPECT_EQ(times("application terminate:"), 0);
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    [[[MorvellaInstallerViewController alloc] initWithNibName:nil bundle:nil] release];
    [pool release];
    morvella::guarded(raising);
    EXPECT_EQ(times("application terminate: nil"), 1);
}

TEST_F(DoorLifeCycleTest, ButtonsNeedNoSender) {
    [door awakeFromNib];
    [door beginInstallButton:nil];
    EXPECT_EQ([door view], static_cast<id>(installation));
    [door licenseAcceptedButton:nil];
    EXPECT_EQ([door view], static_cast<id>(settings));
}

/// What an initializer may do: give another object than the one it was sent to.
id anotherFor(id door) {
    id another = [[door class] alloc];
    [door release];
    return another;
}

id initWithCoder(id door, SEL, NSCoder*) {
    record("super initWithCoder:");
    return anotherFor(door);
}

id initWithNibName(id door, SEL, NSString*, NSBundle*) {
    record("super initWithNibName:bundle:");
    return anotherFor(door);
}

TEST_F(DoorLifeCycleTest, BothControllersAreMadeInEitherWay) {
    const Replaced coding([NSViewController class], @selector(initWithCoder:),
                          reinterpret_cast<IMP>(initWithCoder), "@@:@");
    const Replaced naming([NSViewController class], @selector(initWithNibName:bundle:),
                          reinterpret_cast<IMP>(initWithNibName), "@@:@@");
    takeNews();
    for (Class one :
         {[MorvellaInstallerViewController class], [MorvellaInstallerLicenseVC class]}) {
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        EXPECT_EQ([[[[one alloc] initWithCoder:nil] autorelease] licenseView], nil);
        EXPECT_EQ([[[[one alloc] initWithNibName:nil bundle:nil] autorelease] licenseView], nil);
        [pool release];
    }
    EXPECT_EQ(times("super initWithCoder:"), 2);
    EXPECT_EQ(times("super initWithNibName:bundle:"), 2);
}

TEST_F(DoorLifeCycleTest, BothControllersEndWithWhatTheyInherit) {
    int ended = 0;
    const NotedDealloc ending([NSViewController class], [&] { ++ended; });
    for (Class one :
         {[MorvellaInstallerViewController class], [MorvellaInstallerLicenseVC class]}) {
        [[[one alloc] initWithNibName:nil bundle:nil] release];
    }
    EXPECT_EQ(ended, 2);
}

TEST_F(DoorLifeCycleTest, LicenceControllerFillsItsViewOnceByItself) {
    MorvellaInstallerLicenseVC* licence =
        [[[MorvellaInstallerLicenseVC alloc] initWithNibName:nil bundle:nil] autorelease];
    [licence viewDidLoad];
    [licence setLicenseView:static_cast<id>(text)];
    EXPECT_EQ(timesLoaded(), 0);
    [licence awakeFromNib];
    [licence viewDidLoad];
    EXPECT_EQ(timesLoaded(), 1);
    EXPECT_EQ(times("document initWithURL:options:documentAttributes:error: "
                    "file:///Bundle/license.rtf"),
              1);
    EXPECT_EQ(times("storage setAttributedString: document"), 1);
    EXPECT_EQ(times("super viewDidLoad"), 3);
    EXPECT_EQ(times("super awakeFromNib"), 1);
    EXPECT_EQ([licence licenseText], nil);
}

}  // namespace
