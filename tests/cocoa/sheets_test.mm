#import <AppKit/AppKit.h>
#include <Block.h>
#include <gtest/gtest.h>

#include "cocoa/recorder.h"
#include "platform/cocoa/controls.h"
#include "platform/cocoa/guard.h"
#include "platform/cocoa/window.h"

#include <functional>
#include <memory>
#include <optional>

using AnswerHandler = void (^)(NSModalResponse response);

/// Keeps the handler that it is given, as the platform does until the sheet is answered.
@interface AlertRecorder : Recorder
@end

namespace {

AnswerHandler handler = nil;

}  // namespace

@implementation AlertRecorder

- (void)beginSheetModalForWindow:(NSWindow*)window completionHandler:(AnswerHandler)given {
    morvella::cocoa_tests::record(std::string("alert begins on ") +
                                  [[window description] UTF8String]);
    handler = Block_copy(given);
}

@end

namespace morvella::cocoa_tests {

namespace {

/// A window whose sheets are recorders.
class SheetsTest : public ::testing::Test {
  protected:
    SheetsTest() {
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        AlertRecorder* made = static_cast<AlertRecorder*>([AlertRecorder named:"alert"
                                                                   standingFor:[NSAlert class]]);
        [made answer:panel_ to:@selector(window)];
        alert_ = Retained<AlertRecorder*>(made);
        [pool release];
        takeRecorded();
    }
    ~SheetsTest() override {
        if (handler) {
            Block_release(handler);
            handler = nil;
        }
    }

    /// What the next sheet is.
    AlertRecorder* alert() { return alert_.get(); }

    /// Begins the sheet; nobody but the platform holds it then. Returns what it was given before,
    /// and after that what was done with it.
    Lines begin(
        const Alert& shown, const std::function<void()>& act = [] {}) {
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        {
            const Answering making([NSAlert class], @selector(alloc), alert());
            window.beginSheet(shown, [this, act, held = held_](const AlertAnswer& given) {
                answer = given;
                act();
                EXPECT_EQ([Recorder livingNamed:"alert"], 1);
            });
        }
        alert_ = Retained<AlertRecorder*>();
        held_.reset();
        [pool release];
        rest = takeRecorded();
        return takeSettingsBefore("alert begins on window", rest);
    }

    /// The last request for attention that a sheet of this style makes; -1 for none.
    int attentionFor(AlertStyle style) {
        NSApp = static_cast<id>([Recorder named:"application" standingFor:[NSApplication class]]);
        begin({.style = style});
        NSApp = nil;
        const std::string request = "application requestUserAttention: ";
        return rest.back().starts_with(request) ? std::stoi(rest.back().substr(request.size()))
                                                : -1;
    }

    /// Lets the user press the button with this code; the platform lets go of the handler then.
    void press(NSModalResponse response) {
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        handler(response);
        Block_release(handler);
        handler = nil;
        [pool release];
    }

    CocoaWindow window{static_cast<NSWindow*>([Recorder named:"window"
                                                  standingFor:[NSWindow class]])};
    Lines rest;
    std::optional<AlertAnswer> answer;
    std::weak_ptr<int> callback() const { return held_; }

  private:
    Recorder* panel_ = [Recorder named:"panel" standingFor:[NSWindow class]];
    Retained<AlertRecorder*> alert_;
    std::shared_ptr<int> held_ = std::make_shared<int>();
};

TEST_F(SheetsTest, AnswerThatRaisesAnExceptionIsToldOf) {
    int told = 0;
    setUnknownStateHandler(this, [&] { ++told; });
    begin({.messageText = "Question"}, [] { [NSException raise:@"StubException" format:@""]; });
    press(NSAlertFirstButtonReturn);
    clearUnknownStateHandler(this);
    EXPECT_EQ(told, 1);
}

TEST_F(SheetsTest, AskForTheUsersAttention) {
    EXPECT_EQ(attentionFor(AlertStyle::warning), NSInformationalRequest);
}

TEST_F(SheetsTest, AskForTheUsersAttentionUntilTheyComeIfCritical) {
    EXPECT_EQ(attentionFor(AlertStyle::critical), NSCriticalRequest);
}

TEST_F(SheetsTest, HaveWhatTheAlertHoldsAndNothingElse) {
    const Lines given = begin(
        {.style = AlertStyle::critical, .messageText = "Install failed", .buttons = {"Quit"}});
    EXPECT_EQ(given, (Lines{
                         "alert addButtonWithTitle: Quit",
                         "alert init",
                         "alert setAlertStyle: 2",
                         "alert setMessageText: Install failed",
                         "alert setShowsHelp: NO",
                         "alert window",
                         "panel setPreventsApplicationTerminationWhenModal: NO",
                     }));
    EXPECT_EQ(rest, (Lines{"alert begins on window"}));
}

TEST_F(SheetsTest, HaveHelpCheckBoxAccessoryAndInformativeTextWhereTheAlertHas) {
    Recorder* checkBox = [Recorder named:"check box" standingFor:[NSButton class]];
    [alert() answer:checkBox to:@selector(suppressionButton)];
    NSProgressIndicator* indicator =
        static_cast<NSProgressIndicator*>([Recorder named:"indicator"
                                              standingFor:[NSProgressIndicator class]]);
    const Lines given =
        begin({.style = AlertStyle::warning,
               .messageText = "Found",
               .informativeText = "Two\nlines",
               .buttons = {"Continue", "Quit"},
               .showsHelp = true,
               .suppressionButton = SuppressionButton{.title = "Backup", .state = ControlState::on},
               .accessory = std::make_shared<CocoaProgressIndicator>(indicator)});
    EXPECT_EQ(given, (Lines{
                         "alert addButtonWithTitle: Continue",
                         "alert addButtonWithTitle: Quit",
                         "alert init",
                         "alert setAccessoryView: indicator",
                         "alert setAlertStyle: 0",
                         "alert setInformativeText: Two\nlines",
                         "alert setMessageText: Found",
                         "alert setShowsHelp: YES",
                         "alert setShowsSuppressionButton: YES",
                         "alert suppressionButton",
                         "alert suppressionButton",
                         "alert window",
                         "check box setState: 1",
                         "check box setTitle: Backup",
                         "indicator setUsesThreadedAnimation: YES",
                         "panel setPreventsApplicationTerminationWhenModal: NO",
                     }));
}

TEST_F(SheetsTest, LiveUntilTheyAreAnsweredAndNoLonger) {
    const std::weak_ptr<int> held = callback();
    begin({.messageText = "Found"});
    EXPECT_EQ([Recorder livingNamed:"alert"], 1);
    EXPECT_FALSE(held.expired());
    EXPECT_FALSE(answer);
    press(1000);
    EXPECT_TRUE(answer);
    EXPECT_EQ([Recorder livingNamed:"alert"], 0);
    EXPECT_TRUE(held.expired());
}

TEST_F(SheetsTest, AnswerWithTheButtonAndTheCheckBoxAsItIsThen) {
    Recorder* checkBox = [Recorder named:"check box" standingFor:[NSButton class]];
    [alert() answer:checkBox to:@selector(suppressionButton)];
    begin({.suppressionButton = SuppressionButton{.title = "Backup", .state = ControlState::off}});
    [checkBox answer:[NSNumber numberWithInt:1] to:@selector(state)];
    press(1002);
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->response, 1002);
    EXPECT_EQ(answer->suppressionState, ControlState::on);
}

TEST_F(SheetsTest, WithoutACheckBoxAnswerThatItIsOff) {
    begin({.messageText = "Found"});
    press(-1001);
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->response, -1001);
    EXPECT_EQ(answer->suppressionState, ControlState::off);
}

TEST_F(SheetsTest, WindowComesToTheFrontForTheSender) {
    Recorder* sender = [Recorder named:"door" standingFor:[NSObject class]];
    const Handle<Object, id> handle(sender);
    window.makeKeyAndOrderFront(&handle);
    window.makeKeyAndOrderFront(nullptr);
    EXPECT_EQ(takeRecorded(),
              (Lines{"window makeKeyAndOrderFront: door", "window makeKeyAndOrderFront: nil"}));
}

TEST_F(SheetsTest, WindowOfAViewIsTheOneThatShowsIt) {
    Recorder* view = [Recorder named:"view" standingFor:[NSView class]];
    const CocoaView handle(static_cast<NSView*>(static_cast<id>(view)));
    EXPECT_EQ(handle.window()->identity(), nullptr);
    Recorder* shown = [Recorder named:"shown" standingFor:[NSWindow class]];
    [view answer:shown to:@selector(window)];
    EXPECT_EQ(handle.window()->identity(), shown);
}

}  // namespace

}  // namespace morvella::cocoa_tests
