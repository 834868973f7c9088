#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include "cocoa/recorder.h"
#include "platform/cocoa/controls.h"

namespace morvella::cocoa_tests {

namespace {

/// Replaces the system font: a real one needs a display.
class ControlsTest : public ::testing::Test {
    Answering font_ {
        [NSFont class], @selector(systemFontOfSize:),
            [Recorder named:"font" replacing:[NSFont class]]
    };
};

TEST_F(ControlsTest, ButtonPropertiesAreSetAndRead) {
    NSButton* object = [[[NSButton alloc] init] autorelease];
    [object setAllowsMixedState:YES];
    CocoaButton button(object);
    for (const ControlState state : {ControlState::mixed, ControlState::on, ControlState::off}) {
        button.setState(state);
        EXPECT_EQ([object state], static_cast<int>(state));
        EXPECT_EQ(button.state(), state);
    }
    for (const bool set : {true, false}) {
        button.setEnabled(set);
        button.setHidden(set);
        EXPECT_EQ([object isEnabled] != NO, set);
        EXPECT_EQ([object isHidden] != NO, set);
    }
}

TEST_F(ControlsTest, CellGetsItsTitle) {
    NSTextFieldCell* object = [[[NSTextFieldCell alloc] initTextCell:@"before"] autorelease];
    CocoaTextFieldCell(object).setTitle("Grüße 100%@");
    EXPECT_TRUE([[object title] isEqual:@"Grüße 100%@"]);
}

NSTextView* textViewOver(id storage) {
    Recorder* view = [Recorder named:"text view" replacing:[NSTextView class]];
    [view answer:storage to:@selector(textStorage)];
    return static_cast<NSTextView*>(static_cast<id>(view));
}

/// The colour of each character once a text view shows `text`: "r" for red, "s" for the system's
/// text colour.
std::string coloursShown(NSAttributedString* text) {
    NSMutableAttributedString* storage =
        [[[NSMutableAttributedString alloc] initWithString:@"before"] autorelease];
    CocoaTextView(textViewOver(storage))
        .setAttributedString(std::make_shared<CocoaAttributedString>(text));
    EXPECT_TRUE([[storage string] isEqual:[text string]]);
    std::string colours;
    for (NSUInteger index = 0; index < [storage length]; ++index) {
        NSColor* color = [storage attribute:NSForegroundColorAttributeName
                                    atIndex:index
                             effectiveRange:nullptr];
        colours += [color isEqual:[NSColor textColor]]  ? "s"
                   : [color isEqual:[NSColor redColor]] ? "r"
                                                        : "?";
    }
    return colours;
}

TEST_F(ControlsTest, TextWithoutAColourGetsTheSystemTextColour) {
    NSMutableAttributedString* document =
        [[[NSMutableAttributedString alloc] initWithString:@"a red b"] autorelease];
    [document addAttribute:NSForegroundColorAttributeName
                     value:[NSColor redColor]
                     range:NSMakeRange(2, 3)];
    EXPECT_EQ(coloursShown(document), "ssrrrss");
    EXPECT_EQ(coloursShown([[[NSAttributedString alloc] initWithString:@"x"] autorelease]), "s");
}

TEST_F(ControlsTest, NullTextEmptiesTheView) {
    Recorder* storage = [Recorder named:"storage" replacing:[NSTextStorage class]];
    CocoaTextView view(textViewOver(storage));
    takeRecorded();
    view.setAttributedString(nullptr);
    NSString* empty = [[[[NSAttributedString alloc] initWithString:@""] autorelease] description];
    // AppKit raises an exception if passed nil.
    EXPECT_EQ(takeRecorded().at(1),
              "storage setAttributedString: " + std::string([empty UTF8String]));
}

TEST_F(ControlsTest, IndicatorUsesThreadedAnimationAndPassesTheSenderOn) {
    takeRecorded();
    const id recorder = [Recorder named:"indicator" replacing:[NSProgressIndicator class]];
    CocoaProgressIndicator indicator(recorder);
    const Handle<Object, id> sender([Recorder named:"sender" replacing:[NSObject class]]);
    indicator.startAnimation(&sender);
    indicator.stopAnimation(&sender);
    indicator.startAnimation(nullptr);
    indicator.stopAnimation(nullptr);
    indicator.setHidden(true);
    EXPECT_EQ(takeRecorded(),
              (Lines{"indicator setUsesThreadedAnimation: YES", "indicator startAnimation: sender",
                     "indicator stopAnimation: sender", "indicator startAnimation: nil",
                     "indicator stopAnimation: nil", "indicator setHidden: YES"}));
}

NSProgressIndicator* makeIndicator(const ProgressIndicatorSettings& settings) {
    return objectOf(CocoaControlFactory().makeProgressIndicator(settings).get());
}

TEST_F(ControlsTest, NewIndicatorHasTheGivenSettings) {
    NSProgressIndicator* spinner = makeIndicator({.x = 1,
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

    NSProgressIndicator* bar = makeIndicator({.width = 10, .height = 10});
    EXPECT_EQ(int([bar style]), 0);
    EXPECT_FALSE([bar isIndeterminate]);
    EXPECT_FALSE([bar isHidden]);
    EXPECT_TRUE([makeIndicator({.width = 10, .height = 10, .hidden = true}) isHidden]);
}

}  // namespace

}  // namespace morvella::cocoa_tests
