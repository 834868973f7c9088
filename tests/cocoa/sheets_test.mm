#include "cocoa/door_fixture.h"

#include "platform/cocoa/controls.h"
#include "platform/cocoa/guard.h"
#include "platform/cocoa/window.h"

#include <memory>

namespace morvella::cocoa_tests {

namespace {

template <class T>
T* recorder(const char* name) {
    return static_cast<T*>(static_cast<id>([Recorder named:name replacing:[T class]]));
}

class SheetsTest : public ::testing::Test {
  protected:
    /// Begins a sheet that only the platform retains. `answered` receives the answer.
    void begin(
        const Alert& alert, AlertAnswered answered = [](const AlertAnswer&) {}) {
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        Recorder* made = [TestSheet named:"alert" replacing:[NSAlert class]];
        [made answer:panel_ to:@selector(window)];
        [made answer:checkBox_ to:@selector(suppressionButton)];
        takeRecorded();
        {
            const Answering making([NSAlert class], @selector(alloc), made);
            CocoaWindow(recorder<NSWindow>("window")).beginSheet(alert, std::move(answered));
        }
        [pool release];
    }

    /// Presses the button with this code; the platform then releases the handler.
    static void press(NSModalResponse response) {
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        cocoa_tests::answer(response);
        forgetSheet();
        [pool release];
    }

    Recorder* checkBox_ = [Recorder named:"check box" replacing:[NSButton class]];

  private:
    Recorder* panel_ = [Recorder named:"panel" replacing:[NSWindow class]];
};

TEST_F(SheetsTest, ShowTheAlertsStyleTextAndButtons) {
    begin({.style = AlertStyle::critical, .messageText = "Install failed", .buttons = {"Quit"}});
    Lines lines = takeRecorded();
    EXPECT_EQ(lines.back(), "alert begins on window");
    std::sort(lines.begin(), lines.end());
    EXPECT_EQ(lines,
              (Lines{"alert addButtonWithTitle: Quit", "alert begins on window", "alert init",
                     "alert setAlertStyle: 2", "alert setMessageText: Install failed",
                     "alert setShowsHelp: NO", "alert window",
                     "panel setPreventsApplicationTerminationWhenModal: NO"}));
    press(NSAlertFirstButtonReturn);
}

TEST_F(SheetsTest, ShowHelpCheckBoxAccessoryAndInformativeText) {
    auto* const indicator = recorder<NSProgressIndicator>("indicator");
    begin({.informativeText = "Two\nlines",
           .buttons = {"Continue", "Quit"},
           .showsHelp = true,
           .suppressionButton = SuppressionButton{.title = "Backup", .state = ControlState::on},
           .accessory = std::make_shared<CocoaProgressIndicator>(indicator)});
    const Lines lines = takeRecorded();
    for (const char* setting :
         {"alert addButtonWithTitle: Continue", "alert addButtonWithTitle: Quit",
          "alert setAccessoryView: indicator", "alert setAlertStyle: 0",
          "alert setInformativeText: Two\nlines", "alert setShowsHelp: YES",
          "alert setShowsSuppressionButton: YES", "check box setState: 1",
          "check box setTitle: Backup"}) {
        EXPECT_EQ(std::ranges::count(lines, setting), 1) << setting;
    }
    EXPECT_LT(std::ranges::find(lines, "alert addButtonWithTitle: Continue"),
              std::ranges::find(lines, "alert addButtonWithTitle: Quit"));
    press(NSAlertFirstButtonReturn);
}

TEST_F(SheetsTest, AreReleasedAfterTheyAreAnswered) {
    auto held = std::make_shared<int>();
    const std::weak_ptr<int> callback = held;
    begin({}, [held](const AlertAnswer&) { EXPECT_EQ([Recorder livingNamed:"alert"], 1); });
    held.reset();
    EXPECT_EQ([Recorder livingNamed:"alert"], 1);
    EXPECT_FALSE(callback.expired());
    press(NSAlertFirstButtonReturn);
    EXPECT_EQ([Recorder livingNamed:"alert"], 0);
    EXPECT_TRUE(callback.expired());
}

TEST_F(SheetsTest, ReportTheButtonAndTheStateOfTheCheckBox) {
    for (const int state : {-1, 0, 1}) {
        AlertAnswer given;
        begin({.suppressionButton = SuppressionButton{}},
              [&](const AlertAnswer& answered) { given = answered; });
        [checkBox_ answer:@(state) to:@selector(state)];
        press(1000 + state);
        EXPECT_EQ(given.response, 1000 + state);
        EXPECT_EQ(static_cast<int>(given.suppressionState), state);
    }
}

TEST_F(SheetsTest, RequestAttentionAccordingToTheirStyle) {
    NSApp = static_cast<id>([Recorder named:"application" replacing:[NSApplication class]]);
    for (const auto& [style, request] : {std::pair(AlertStyle::warning, NSInformationalRequest),
                                         std::pair(AlertStyle::critical, NSCriticalRequest)}) {
        begin({.style = style});
        EXPECT_EQ(takeRecorded().back(),
                  "application requestUserAttention: " + std::to_string(request));
        press(NSAlertFirstButtonReturn);
    }
    NSApp = nil;
}

TEST_F(SheetsTest, GuardTheirCompletionHandlers) {
    int handled = 0;
    setUnknownStateHandler(this, [&] { ++handled; });
    begin({}, [](const AlertAnswer&) { [NSException raise:@"StubException" format:@""]; });
    press(NSAlertFirstButtonReturn);
    clearUnknownStateHandler(this);
    EXPECT_EQ(handled, 1);
}

}  // namespace

}  // namespace morvella::cocoa_tests
