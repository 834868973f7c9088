#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#import "platform/cocoa/MorvellaInstallerLicenseVC.h"
#import "platform/cocoa/MorvellaInstallerViewController.h"

#include "cocoa/recorder.h"

#include <algorithm>

@interface MorvellaInstallerViewController (WhatThePlatformCalls)
- (void)windowIsOnScreen;
@end

/// Holds the page. As AppKit may, it tells the door that the page has appeared while it changes it.
@interface PlaceRecorder : Recorder {
  @public
    NSViewController* door;
}
@end

@implementation PlaceRecorder

- (void)replaceSubview:(NSView*)shown with:(NSView*)page {
    morvella::cocoa_tests::record(std::string("place shows ") + [[page description] UTF8String]);
    [door viewDidAppear];
}

@end

/// Begins and is never answered.
@interface StandingSheet : Recorder
@end

@implementation StandingSheet

- (void)beginSheetModalForWindow:(NSWindow*)window
               completionHandler:(void (^)(NSModalResponse))handler {
    morvella::cocoa_tests::record("sheet begins");
}

@end

using namespace morvella::cocoa_tests;

namespace {

// What the doors inherit. AppKit promises little of when it calls what.

NSView* inheritedView = nil;
bool disturbs = false;

void inheritedAwakeFromNib(id, SEL) {
    record("super awakeFromNib");
}

void inheritedViewDidLoad(id, SEL) {
    record("super viewDidLoad");
}

void inheritedViewDidAppear(id, SEL) {
    record("super viewDidAppear");
}

id view(id, SEL) {
    return inheritedView;
}

void setView(id door, SEL, NSView* view) {
    record(std::string("super setView: ") + [[view description] UTF8String]);
    inheritedView = view;
    if (disturbs) {
        [door viewDidLoad];
        [door viewDidAppear];
    }
}

IMP implementation(void (*function)(id, SEL)) {
    return reinterpret_cast<IMP>(function);
}

class InheritedLifeCycle {
    Replaced awaking_ {
        [NSViewController class], @selector(awakeFromNib), implementation(inheritedAwakeFromNib),
            "v@:"
    };
    Replaced loading_ {
        [NSViewController class], @selector(viewDidLoad), implementation(inheritedViewDidLoad),
            "v@:"
    };
    Replaced appearing_ {
        [NSViewController class], @selector(viewDidAppear), implementation(inheritedViewDidAppear),
            "v@:"
    };
    Replaced viewing_ {
        [NSViewController class], @selector(view), reinterpret_cast<IMP>(view), "@@:"
    };
    Replaced setting_ {
        [NSViewController class], @selector(setView:), reinterpret_cast<IMP>(setView), "v@:@"
    };
};

/// Everything that the doors have around them is recorded. Every page whose work starts ends in a
/// sheet on the window.
class DoorLifeCycleTest : public ::testing::Test {
  protected:
    DoorLifeCycleTest() {
        place_->door = door;
        for (Recorder* page : {initial, settings, installation}) {
            show(page);
        }
        [bundle_ answer:[NSURL fileURLWithPath:@"/Bundle/license.rtf" isDirectory:NO]
                     to:@selector(URLForResource:withExtension:)];
        [text answer:[Recorder named:"storage" standingFor:[NSTextStorage class]]
                  to:@selector(textStorage)];
        [door setInitialView:static_cast<id>(initial)];
        [door setSettingsView:static_cast<id>(settings)];
        [door setDoInstallView:static_cast<id>(installation)];
        [door setLicenseText:static_cast<id>(text)];
        [door setView:static_cast<id>(initial)];
        takeRecorded();
    }

    ~DoorLifeCycleTest() override {
        [NSObject cancelPreviousPerformRequestsWithTarget:door];
        disturbs = false;
        inheritedView = nil;
    }

    void show(Recorder* page) {
        [page answer:window to:@selector(window)];
        [page answer:place_ to:@selector(superview)];
    }

    /// Loads the door and brings its window on the screen, as the platform should.
    void start() {
        [door awakeFromNib];
        [door windowIsOnScreen];
        takeNews();
    }

    /// How often what begins like this was recorded since the last `takeNews`.
    long times(const std::string& beginning) {
        const Lines more = takeRecorded();
        news_.insert(news_.end(), more.begin(), more.end());
        return std::count_if(news_.begin(), news_.end(),
                             [&](const std::string& line) { return line.starts_with(beginning); });
    }

    void takeNews() {
        takeRecorded();
        news_.clear();
    }

    long timesLoaded() { return times("bundle URLForResource:withExtension: license.rtf nil"); }
    long timesDispatched() { return times("sheet begins"); }

    Recorder* initial = [Recorder named:"initial view" standingFor:[NSView class]];
    Recorder* settings = [Recorder named:"settings page" standingFor:[NSView class]];
    Recorder* installation = [Recorder named:"installation page" standingFor:[NSView class]];
    Recorder* text = [Recorder named:"text view" standingFor:[NSTextView class]];
    Recorder* window = [Recorder named:"window" standingFor:[NSWindow class]];

  private:
    InheritedLifeCycle inherited_;
    PlaceRecorder* place_ = static_cast<PlaceRecorder*>([PlaceRecorder named:"place"
                                                                 standingFor:[NSView class]]);
    Recorder* bundle_ = [Recorder named:"bundle" standingFor:[NSBundle class]];
    Answering mainBundle_ { [NSBundle class], @selector(mainBundle), bundle_ };
    Answering document_ {
        [NSAttributedString class], @selector(alloc),
            [Recorder named:"document" standingFor:[NSAttributedString class]]
    };
    Answering sheet_ {
        [NSAlert class], @selector(alloc), [StandingSheet named:"sheet" standingFor:[NSAlert class]]
    };
    Lines news_;

  protected:
    MorvellaInstallerViewController* door =
        [[[MorvellaInstallerViewController alloc] initWithNibName:nil bundle:nil] autorelease];
};

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
    disturbs = true;
    [door setView:static_cast<id>(settings)];
    Lines order;
    for (const std::string& line : takeRecorded()) {
        for (const char* step : {"super setView:", "place shows", "window makeFirstResponder:",
                                 "window displayIfNeeded", "sheet begins"}) {
            if (line.starts_with(step)) {
                order.push_back(line);
            }
        }
    }
    EXPECT_EQ(order,
              (Lines{"super setView: settings page", "place shows settings page",
                     "window makeFirstResponder: nil", "window displayIfNeeded", "sheet begins"}));
    [door viewDidAppear];
    EXPECT_EQ(timesDispatched(), 0);
    EXPECT_EQ(timesLoaded(), 0);
}

TEST_F(DoorLifeCycleTest, MakesTheFirstControlOfAPageTheFirstResponder) {
    start();
    [settings answer:[Recorder named:"button" standingFor:[NSButton class]]
                  to:@selector(nextValidKeyView)];
    [door setView:static_cast<id>(settings)];
    EXPECT_EQ(times("window makeFirstResponder: button"), 1);
}

TEST_F(DoorLifeCycleTest, HoldsAViewThatNoWindowShows) {
    inheritedView = static_cast<id>([Recorder named:"nowhere" standingFor:[NSView class]]);
    [door awakeFromNib];
    [door setView:static_cast<id>(settings)];
    EXPECT_EQ([door view], static_cast<id>(settings));
    EXPECT_EQ(timesDispatched(), 0);
    EXPECT_EQ(times("place shows"), 0);
}

TEST_F(DoorLifeCycleTest, ButtonsNeedNoSender) {
    [door awakeFromNib];
    [door beginInstallButton:nil];
    EXPECT_EQ([door view], static_cast<id>(installation));
    [door licenseAcceptedButton:nil];
    EXPECT_EQ([door view], static_cast<id>(settings));
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
