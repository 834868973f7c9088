#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "cocoa/recorder.h"
#include "platform/cocoa/controls.h"

namespace morvella::cocoa_tests {

namespace {

/// A recorder in the place of an AppKit object.
template <class Class>
Class* standIn(const char* name) {
    return static_cast<Class*>(static_cast<id>([Recorder named:name standingFor:[Class class]]));
}

TEST(ControlsTest, ButtonIsSetAndRead) {
    NSButton* object = standIn<NSButton>("button");
    CocoaButton button(object);
    takeRecorded();
    button.setState(ControlState::on);
    button.setState(ControlState::off);
    button.setEnabled(true);
    button.setEnabled(false);
    button.setHidden(true);
    button.setHidden(false);
    EXPECT_EQ(takeRecorded(),
              (Lines{"button setState: 1", "button setState: 0", "button setEnabled: YES",
                     "button setEnabled: NO", "button setHidden: YES", "button setHidden: NO"}));
    for (const int state : {-1, 0, 1}) {
        [static_cast<Recorder*>(static_cast<id>(object)) answer:[NSNumber numberWithInt:state]
                                                             to:@selector(state)];
        EXPECT_EQ(static_cast<int>(button.state()), state);
    }
}

TEST(ControlsTest, CellGetsItsTitle) {
    CocoaTextFieldCell cell(standIn<NSTextFieldCell>("cell"));
    takeRecorded();
    cell.setTitle("Grüße 100%@");
    EXPECT_EQ(takeRecorded(), (Lines{"cell setTitle: Grüße 100%@"}));
}

NSTextView* textViewOver(id storage) {
    Recorder* view = [Recorder named:"text view" standingFor:[NSTextView class]];
    [view answer:storage to:@selector(textStorage)];
    return static_cast<NSTextView*>(static_cast<id>(view));
}

TEST(ControlsTest, TextViewsWholeContentIsReplaced) {
    NSMutableAttributedString* storage =
        [[[NSMutableAttributedString alloc] initWithString:@"before"] autorelease];
    CocoaTextView view(textViewOver(storage));
    NSAttributedString* text = [[[NSAttributedString alloc] initWithString:@"Licence"] autorelease];
    view.setAttributedString(std::make_shared<CocoaAttributedString>(text));
    EXPECT_TRUE([[storage string] isEqual:@"Licence"]);
    view.setAttributedString(nullptr);
    EXPECT_EQ([storage length], 0U);
}

NSColor* colorAt(NSAttributedString* text, NSUInteger index) {
    return [text attribute:NSForegroundColorAttributeName atIndex:index effectiveRange:nullptr];
}

TEST(ControlsTest, TextKeepsTheDocumentsColoursAndTheRestHasTheSystems) {
    NSMutableAttributedString* storage = [[[NSMutableAttributedString alloc] init] autorelease];
    NSMutableAttributedString* document =
        [[[NSMutableAttributedString alloc] initWithString:@"plain red plain"] autorelease];
    NSColor* red = [NSColor colorWithCalibratedRed:1 green:0 blue:0 alpha:1];
    [document addAttribute:NSForegroundColorAttributeName value:red range:NSMakeRange(6, 3)];
    CocoaTextView view(textViewOver(storage));
    view.setAttributedString(std::make_shared<CocoaAttributedString>(document));
    EXPECT_TRUE([[storage string] isEqual:@"plain red plain"]);
    for (const NSUInteger index : {6, 7, 8}) {
        EXPECT_TRUE([colorAt(storage, index) isEqual:red]) << index;
    }
    for (const NSUInteger index : {0, 5, 9, 14}) {
        EXPECT_TRUE([colorAt(storage, index) isEqual:[NSColor textColor]]) << index;
    }
}

TEST(ControlsTest, ASingleLetterWithoutAColourHasTheSystems) {
    NSMutableAttributedString* storage = [[[NSMutableAttributedString alloc] init] autorelease];
    NSAttributedString* document = [[[NSAttributedString alloc] initWithString:@"x"] autorelease];
    CocoaTextView view(textViewOver(storage));
    view.setAttributedString(std::make_shared<CocoaAttributedString>(document));
    EXPECT_TRUE([colorAt(storage, 0) isEqual:[NSColor textColor]]);
}

TEST(ControlsTest, NoTextIsHandedOutAsAnEmptyOne) {
    CocoaTextView view(textViewOver(standIn<NSTextStorage>("storage")));
    takeRecorded();
    view.setAttributedString(nullptr);
    const Lines lines = takeRecorded();
    // Apple's raises an exception over nil.
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "storage setAttributedString: nil"), 0);
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                            [](const std::string& line) {
                                return line.starts_with("storage setAttributedString: ");
                            }),
              1);
}

TEST(ControlsTest, IndicatorTurnsInAThreadOfItsOwnForItsSender) {
    takeRecorded();
    CocoaProgressIndicator indicator(standIn<NSProgressIndicator>("indicator"));
    const Handle<Object, id> sender([Recorder named:"sender" standingFor:[NSObject class]]);
    indicator.startAnimation(&sender);
    indicator.stopAnimation(&sender);
    indicator.startAnimation(nullptr);
    indicator.stopAnimation(nullptr);
    indicator.setHidden(true);
    indicator.setHidden(false);
    EXPECT_EQ(takeRecorded(),
              (Lines{"indicator setUsesThreadedAnimation: YES", "indicator startAnimation: sender",
                     "indicator stopAnimation: sender", "indicator startAnimation: nil",
                     "indicator stopAnimation: nil", "indicator setHidden: YES",
                     "indicator setHidden: NO"}));
}

NSProgressIndicator* madeIndicator(const ProgressIndicatorSettings& settings) {
    return objectOf(CocoaControlFactory().makeProgressIndicator(settings).get());
}

TEST(ControlsTest, NewIndicatorHasWhatIsAskedFor) {
    NSProgressIndicator* spinner = madeIndicator({.x = 1,
                                                  .y = 2,
                                                  .width = 30,
                                                  .height = 40,
                                                  .style = ProgressIndicatorStyle::spinning,
                                                  .indeterminate = true,
                                                  .hidden = true});
    EXPECT_TRUE(NSEqualRects([spinner frame], NSMakeRect(1, 2, 30, 40)));
    EXPECT_EQ(int([spinner style]), 1);
    EXPECT_TRUE([spinner isIndeterminate]);
    EXPECT_TRUE([spinner isHidden]);

    NSProgressIndicator* bar = madeIndicator({.width = 10, .height = 10});
    EXPECT_EQ(int([bar style]), 0);
    EXPECT_FALSE([bar isIndeterminate]);
    EXPECT_FALSE([bar isHidden]);
    EXPECT_TRUE([madeIndicator({.width = 10, .height = 10, .hidden = true}) isHidden]);
}

}  // namespace

}  // namespace morvella::cocoa_tests
