#import <AppKit/AppKit.h>
#include <gtest/gtest.h>
#import <objc/runtime.h>

#import "platform/cocoa/StepsSidebar.h"

#include "cocoa/recorder.h"

#include <map>
#include <set>

namespace morvella::cocoa_tests {

namespace {

/// The views and cells hidden from VoiceOver, and the labels of the others.
std::set<id> hidden;
std::map<id, std::string> spoken;

void setElement(id object, SEL, BOOL element) {
    if (!element) {
        hidden.insert(object);
    }
}

void setLabel(id object, SEL, NSString* label) {
    spoken[object] = [label UTF8String];
}

std::string roleOf(NSColor* color) {
    return [color isEqual:[NSColor labelColor]]                          ? "text colour"
           : [color isEqual:[NSColor alternateSelectedControlTextColor]] ? "selected colour"
           : [color isEqual:[NSColor secondaryLabelColor]]               ? "pale colour"
                                                                         : "another colour";
}

/// How one part of the sidebar looks and what VoiceOver says for it.
std::string describe(NSControl* part) {
    if (hidden.contains(part) != hidden.contains([part cell])) {
        return "hidden only in part";
    }
    const std::string heard = hidden.contains(part) ? "not spoken" : "spoken: " + spoken[part];
    if ([part isKindOfClass:[NSImageView class]]) {
        return "picture, " + heard;
    }
    auto* label = static_cast<NSTextField*>(part);
    const bool plain = ![label isEditable] && ![label isSelectable] && ![label isBezeled] &&
                       ![label drawsBackground];
    const bool bold = [label font] == [NSFont boldSystemFontOfSize:13];
    return std::string([[label stringValue] UTF8String]) + ", " + roleOf([label textColor]) +
           (bold ? ", bold, " : ", ") + heard + (plain ? "" : ", not a plain label");
}

/// The end-to-end tests check the layout of the rows in screenshots.
class SidebarTest : public ::testing::Test {
  protected:
    ~SidebarTest() override {
        hidden.clear();
        spoken.clear();
    }

    /// Describes each part of the sidebar with these steps, in order.
    Lines shown(const std::vector<Step>& steps) {
        hidden.clear();
        spoken.clear();
        [sidebar setSteps:steps];
        Lines lines;
        for (NSControl* part in [sidebar subviews]) {
            lines.push_back(describe(part));
        }
        return lines;
    }

    StepsSidebar* sidebar =
        [[[StepsSidebar alloc] initWithFrame:NSMakeRect(0, 0, 200, 300)] autorelease];

  private:
    static id recorder(const char* name) { return [Recorder named:name replacing:[NSFont class]]; }

    // A real font needs a display.
    Answering font_ { [NSFont class], @selector(systemFontOfSize:), recorder("font") };
    Answering boldFont_ { [NSFont class], @selector(boldSystemFontOfSize:), recorder("bold font") };
    Replaced hidingView_ { [NSView class], @selector(setAccessibilityElement:), setElement };
    Replaced hidingCell_ { [NSCell class], @selector(setAccessibilityElement:), setElement };
    Replaced labelling_ { [NSView class], @selector(setAccessibilityLabel:), setLabel };
};

TEST_F(SidebarTest, ShowsEachStepsStateAndSpeaksItOnce) {
    EXPECT_EQ(shown({{"Welcome", StepState::done, "Welcome, done"},
                     {"Licence", StepState::current, "Licence, current step"},
                     {"Finish", StepState::toCome, "Finish, not reached yet"}}),
              (Lines{"picture, not spoken", "Welcome, text colour, spoken: Welcome, done",
                     "2, selected colour, bold, not spoken",
                     "Licence, selected colour, bold, spoken: Licence, current step",
                     "3, pale colour, not spoken",
                     "Finish, pale colour, spoken: Finish, not reached yet"}));
}

TEST_F(SidebarTest, ReplacesTheStepsShownBefore) {
    shown({{"One", StepState::done, "One"}, {"Two", StepState::toCome, "Two"}});
    EXPECT_EQ(shown({{"Three", StepState::current, "Three"}}),
              (Lines{"1, selected colour, bold, not spoken",
                     "Three, selected colour, bold, spoken: Three"}));
}

}  // namespace

}  // namespace morvella::cocoa_tests
