#import <AppKit/AppKit.h>
#include <Block.h>
#include <gtest/gtest.h>
#import <objc/runtime.h>

#import "platform/cocoa/PressMonitor.h"

#include "cocoa/recorder.h"

using EventHandler = NSEvent* (^)(NSEvent* event);

/// A window or its frame view, with at most one view under the pointer and one title bar button.
@interface TestWindow : Recorder {
  @public
    NSView* hit;
    NSWindowButton kind;
    id button;
}
@end

@implementation TestWindow

- (NSView*)hitTest:(NSPoint)point {
    return NSEqualPoints(point, NSMakePoint(30, 40)) ? hit : nil;
}

- (NSButton*)standardWindowButton:(NSWindowButton)asked {
    return asked == kind ? button : nil;
}

@end

namespace morvella::cocoa_tests {

namespace {

EventHandler eventHandler = nil;
NSEventMask watched = 0;
id shownWindow = nil;
// Never reset, so that each test starts long after the previous one.
NSTimeInterval uptime = 1000;

id addMonitor(id, SEL, NSEventMask mask, EventHandler handler) {
    watched = mask;
    eventHandler = Block_copy(handler);
    return nil;
}

id windowOfEvent(id, SEL) {
    return shownWindow;
}

double systemUptime(id, SEL) {
    return uptime;
}

/// A page has just been drawn, with at most one view under the pointer.
class PressMonitorTest : public ::testing::Test {
  protected:
    PressMonitorTest() {
        [content_ answer:frame_ to:@selector(superview)];
        [window_ answer:content_ to:@selector(contentView)];
        shownWindow = window_;
        [PressMonitor start];
        uptime += 100;
        [PressMonitor screenChanged];
    }

    ~PressMonitorTest() override {
        [[NSNotificationCenter defaultCenter] removeObserver:[PressMonitor class]];
        Block_release(eventHandler);
        shownWindow = nil;
    }

    /// Puts a view of this class under the pointer.
    Recorder* show(Class kind) {
        Recorder* view = [Recorder named:"view" replacing:kind];
        [view answer:window_ to:@selector(window)];
        frame_->hit = static_cast<id>(view);
        return view;
    }

    /// Whether a click reaches the window this many seconds after the page was drawn.
    static bool clicks(NSTimeInterval later) { return passes(click(uptime + later)); }
    static NSEvent* click(NSTimeInterval time) {
        return [NSEvent mouseEventWithType:NSEventTypeLeftMouseDown
                                  location:NSMakePoint(30, 40)
                             modifierFlags:0
                                 timestamp:time
                              windowNumber:0
                                   context:nil
                               eventNumber:0
                                clickCount:1
                                  pressure:1];
    }

    /// The same for a key.
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

    static bool passes(NSEvent* event) {
        NSEvent* passed = eventHandler(event);
        EXPECT_TRUE(!passed || passed == event);
        return passed != nil;
    }

    TestWindow* window_ = static_cast<TestWindow*>([TestWindow named:"window"
                                                           replacing:[NSWindow class]]);
    Recorder* content_ = [Recorder named:"content" replacing:[NSView class]];
    TestWindow* frame_ = static_cast<TestWindow*>([TestWindow named:"frame"
                                                          replacing:[NSView class]]);

  private:
    Replaced watching_ {
        object_getClass([NSEvent class]), @selector(addLocalMonitorForEventsMatchingMask:handler:),
            addMonitor
    };
    Replaced windows_ { [NSEvent class], @selector(window), windowOfEvent };
    Replaced uptimes_ { [NSProcessInfo class], @selector(systemUptime), systemUptime };
};

TEST_F(PressMonitorTest, WatchesOnlyClicksAndKeys) {
    EXPECT_EQ(watched, NSEventMask(NSEventMaskLeftMouseDown | NSEventMaskKeyDown));
}

TEST_F(PressMonitorTest, DiscardsClicksOnButtonsSoonAfterThePageWasDrawn) {
    show([NSButton class]);
    EXPECT_FALSE(clicks(0.1));
    EXPECT_TRUE(clicks(0.7));
}

TEST_F(PressMonitorTest, FindsTheButtonAroundAView) {
    Recorder* button = show([NSButton class]);
    Recorder* content = [Recorder named:"content" replacing:[NSView class]];
    [content answer:button to:@selector(superview)];
    [show([NSImageView class]) answer:content to:@selector(superview)];
    EXPECT_FALSE(clicks(0.1));
}

TEST_F(PressMonitorTest, PassesClicksThatHitNoButton) {
    EXPECT_TRUE(clicks(0.1));
    show([NSTextView class]);
    EXPECT_TRUE(clicks(0.1));
    show([NSButton class]);
    EXPECT_TRUE(clicks(0.55)) << "clicks that hit no button belong to no series";
    shownWindow = nil;
    [PressMonitor screenChanged];
    EXPECT_TRUE(clicks(0.1));
}

TEST_F(PressMonitorTest, PassesClicksOnTitleBarButtons) {
    window_->button = show([NSButton class]);
    for (const NSWindowButton kind :
         {NSWindowCloseButton, NSWindowMiniaturizeButton, NSWindowZoomButton}) {
        window_->kind = kind;
        EXPECT_TRUE(clicks(0.1)) << kind;
    }
    window_->button = [Recorder named:"other" replacing:[NSButton class]];
    EXPECT_FALSE(clicks(0.1));
}

TEST_F(PressMonitorTest, DiscardsOnlyKeysThatPressButtonsSoonAfterThePageWasDrawn) {
    for (NSString* key : {@"\r", @"\x03", @" ", @"\x1b"}) {
        [PressMonitor screenChanged];
        EXPECT_FALSE(types(key, 0.1)) << [key characterAtIndex:0];
        EXPECT_TRUE(types(key, 0.7)) << [key characterAtIndex:0];
    }
    [PressMonitor screenChanged];
    EXPECT_TRUE(types(@"x", 0.1));
    EXPECT_TRUE(types(@"", 0.1));
    EXPECT_TRUE(types(@"\r", 0.1, NO, NSEventModifierFlagCommand));
}

TEST_F(PressMonitorTest, DiscardsTheRepeatsOfAHeldKey) {
    EXPECT_TRUE(types(@"\r", 1));
    EXPECT_FALSE(types(@"\r", 5, YES));
}

TEST_F(PressMonitorTest, TreatsAPressWithoutATimestampAsMadeNow) {
    show([NSButton class]);
    uptime += 0.4;
    EXPECT_FALSE(passes(click(0)));
    uptime += 0.6;
    EXPECT_TRUE(passes(click(0)));
}

TEST_F(PressMonitorTest, TreatsTheStartAndEndOfASheetAsANewPage) {
    for (NSString* name : {NSWindowWillBeginSheetNotification, NSWindowDidEndSheetNotification}) {
        uptime += 10;
        [[NSNotificationCenter defaultCenter] postNotificationName:name
                                                            object:static_cast<id>(shownWindow)];
        EXPECT_FALSE(types(@"\r", 0.1)) << [name UTF8String];
    }
}

}  // namespace

}  // namespace morvella::cocoa_tests
