#import <AppKit/AppKit.h>
#include <Block.h>
#include <gtest/gtest.h>
#import <objc/runtime.h>

#import "platform/cocoa/PressMonitor.h"

#include "cocoa/recorder.h"

#include <utility>

/// Holds something at one place.
@interface FrameRecorder : Recorder {
  @public
    NSPoint place;
    NSView* hit;
}
@end

@implementation FrameRecorder

- (NSView*)hitTest:(NSPoint)point {
    return NSEqualPoints(point, place) ? hit : nil;
}

@end

/// Has one button in its title bar.
@interface TitledWindowRecorder : Recorder {
  @public
    NSWindowButton kind;
    id button;
}
@end

@implementation TitledWindowRecorder

- (NSButton*)standardWindowButton:(NSWindowButton)asked {
    return asked == kind ? button : nil;
}

@end

namespace morvella::cocoa_tests {

namespace {

using EventHandler = NSEvent* (^)(NSEvent* event);

EventHandler eventHandler = nil;
NSEventMask watched = 0;
id shownWindow = nil;
// It never goes back, so that no test sees the presses of one before.
NSTimeInterval uptime = 1000;

id addMonitor(id, SEL, NSEventMask mask, EventHandler handler) {
    record("events watched");
    watched = mask;
    eventHandler = Block_copy(handler);
    return nil;
}

id windowOfEvent(id, SEL) {
    return shownWindow;
}

double doubleClickInterval(id, SEL) {
    return 0.5;
}

double systemUptime(id, SEL) {
    return uptime;
}

/// A window with one thing at one place, and a page that has just been shown in it.
class PressMonitorTest : public ::testing::Test {
  protected:
    PressMonitorTest() {
        [[NSNotificationCenter defaultCenter] removeObserver:[PressMonitor class]];
        frame_->place = NSMakePoint(30, 40);
        [content_ answer:frame_ to:@selector(superview)];
        [window_ answer:content_ to:@selector(contentView)];
        shownWindow = window_;
        takeRecorded();
        [PressMonitor start];
        EXPECT_EQ(takeRecorded(), (Lines{"events watched"}));
        uptime += 100;
        [PressMonitor screenChanged];
    }

    ~PressMonitorTest() override {
        [[NSNotificationCenter defaultCenter] removeObserver:[PressMonitor class]];
        Block_release(eventHandler);
        eventHandler = nil;
        shownWindow = nil;
    }

    /// What lies under the pointer.
    Recorder* show(Class kind) {
        Recorder* view = [Recorder named:"view" standingFor:kind];
        [view answer:window_ to:@selector(window)];
        frame_->hit = static_cast<id>(view);
        return view;
    }
    void putIntoTitleBar(Recorder* button, NSWindowButton kind) {
        window_->kind = kind;
        window_->button = button;
    }

    /// Whether a click, so many seconds after the page was shown, reaches the window.
    static bool clicks(NSTimeInterval later, NSInteger count = 1, NSPoint at = {30, 40}) {
        return passes([NSEvent mouseEventWithType:NSEventTypeLeftMouseDown
                                         location:at
                                    modifierFlags:0
                                        timestamp:uptime + later
                                     windowNumber:0
                                          context:nil
                                      eventNumber:0
                                       clickCount:count
                                         pressure:1]);
    }

    /// Likewise for a key.
    static bool types(NSString* key, NSTimeInterval later, BOOL isRepeat = NO,
                      NSUInteger modifiers = 0) {
        return passes([NSEvent keyEventWithType:NSEventTypeKeyDown
                                       location:NSZeroPoint
                                  modifierFlags:modifiers
                                      timestamp:uptime + later
                                   windowNumber:0
                                        context:nil
                                     characters:@"?"
                    charactersIgnoringModifiers:key
                                      isARepeat:isRepeat
                                        keyCode:36]);
    }

  private:
    static bool passes(NSEvent* event) {
        NSEvent* passed = eventHandler(event);
        EXPECT_TRUE(!passed || passed == event);
        return passed != nil;
    }

    Replaced watching_ {
        object_getClass([NSEvent class]), @selector(addLocalMonitorForEventsMatchingMask:handler:),
            reinterpret_cast<IMP>(addMonitor), "@@:Q@?"
    };
    Replaced windows_ {
        [NSEvent class], @selector(window), reinterpret_cast<IMP>(windowOfEvent), "@@:"
    };
    Replaced intervals_ {
        object_getClass([NSEvent class]), @selector(doubleClickInterval),
            reinterpret_cast<IMP>(doubleClickInterval), "d@:"
    };
    Replaced uptimes_ {
        [NSProcessInfo class], @selector(systemUptime), reinterpret_cast<IMP>(systemUptime), "d@:"
    };
    FrameRecorder* frame_ = static_cast<FrameRecorder*>([FrameRecorder named:"frame"
                                                                 standingFor:[NSView class]]);
    Recorder* content_ = [Recorder named:"content" standingFor:[NSView class]];
    TitledWindowRecorder* window_ =
        static_cast<TitledWindowRecorder*>([TitledWindowRecorder named:"window"
                                                           standingFor:[NSWindow class]]);
};

TEST_F(PressMonitorTest, LooksAtClicksAndKeysAndNothingElse) {
    EXPECT_EQ(watched, NSEventMask(NSEventMaskLeftMouseDown | NSEventMaskKeyDown));
}

TEST_F(PressMonitorTest, HoldsBackClicksOnButtonsFromBeforeThePage) {
    show([NSButton class]);
    EXPECT_FALSE(clicks(-0.1));
    EXPECT_TRUE(clicks(0));
    EXPECT_TRUE(clicks(0.1));
}

TEST_F(PressMonitorTest, HoldsBackTheLaterClicksOfAMultipleClick) {
    show([NSButton class]);
    EXPECT_TRUE(clicks(1, 1));
    EXPECT_FALSE(clicks(1.2, 2));
    EXPECT_FALSE(clicks(1.4, 3));
}

TEST_F(PressMonitorTest, LetsClicksBesideTheButtonsPass) {
    EXPECT_TRUE(clicks(-1));
    show([NSTextView class]);
    EXPECT_TRUE(clicks(-1));
    show([NSButton class]);
    EXPECT_TRUE(clicks(-1, 1, {31, 40}));
    shownWindow = nil;
    EXPECT_TRUE(clicks(-1));
}

TEST_F(PressMonitorTest, LetsTheTitleBarsButtonsBePressedAtAnyTime) {
    Recorder* button = show([NSButton class]);
    for (const NSWindowButton kind :
         {NSWindowCloseButton, NSWindowMiniaturizeButton, NSWindowZoomButton}) {
        putIntoTitleBar(button, kind);
        EXPECT_TRUE(clicks(-1)) << kind;
    }
    putIntoTitleBar([Recorder named:"other" standingFor:[NSButton class]], NSWindowCloseButton);
    EXPECT_FALSE(clicks(-1));
}

TEST_F(PressMonitorTest, HoldsBackKeysThatPressButtonsFromBeforeThePage) {
    for (NSString* key : {@"\r", @"\x03", @" ", @"\x1b"}) {
        EXPECT_FALSE(types(key, -2)) << [key characterAtIndex:0];
        EXPECT_TRUE(types(key, 0)) << [key characterAtIndex:0];
    }
}

TEST_F(PressMonitorTest, LetsOtherKeysPass) {
    EXPECT_TRUE(types(@"x", -1));
    EXPECT_TRUE(types(@"", -1));
    // A key with Command is a menu's: Command-Return presses no button.
    EXPECT_TRUE(types(@"\r", -1, NO, NSEventModifierFlagCommand));
}

TEST_F(PressMonitorTest, HoldsBackAKeyThatIsHeldDown) {
    EXPECT_TRUE(types(@"\r", 1));
    EXPECT_FALSE(types(@"\r", 5, YES));
}

TEST_F(PressMonitorTest, HoldsBackAKeyThatIsPressedTwiceQuickly) {
    EXPECT_TRUE(types(@"\r", 1));
    EXPECT_TRUE(types(@" ", 1.1)) << "another key";
    EXPECT_FALSE(types(@"\r", 1.4));
    EXPECT_TRUE(types(@"\r", 2.4));
}

TEST_F(PressMonitorTest, TakesASheetThatComesOrGoesForANewPage) {
    show([NSButton class]);
    for (NSString* name : {NSWindowWillBeginSheetNotification, NSWindowDidEndSheetNotification}) {
        uptime += 10;
        EXPECT_TRUE(clicks(-1));
        [[NSNotificationCenter defaultCenter] postNotificationName:name
                                                            object:static_cast<id>(shownWindow)];
        EXPECT_FALSE(clicks(-1)) << [name UTF8String];
        EXPECT_TRUE(clicks(0));
    }
}

}  // namespace

}  // namespace morvella::cocoa_tests
