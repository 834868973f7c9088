#import <AppKit/AppKit.h>
#include <gtest/gtest.h>
#import <objc/runtime.h>

#import "platform/cocoa/StepsSidebar.h"

#include "cocoa/recorder.h"

#include <algorithm>

namespace morvella::cocoa_tests {

namespace {

id newLabel(id, SEL) {
    return [[Recorder named:"label" standingFor:[NSTextField class]] retain];
}

id newPicture(id, SEL) {
    return [[Recorder named:"picture" standingFor:[NSImageView class]] retain];
}

id font(id, SEL, CGFloat) {
    return [Recorder named:"font" standingFor:[NSFont class]];
}

id boldFont(id, SEL, CGFloat) {
    return [Recorder named:"bold font" standingFor:[NSFont class]];
}

id image(id, SEL, NSString* name) {
    return [Recorder named:[name UTF8String] standingFor:[NSImage class]];
}

void addSubview(id, SEL, NSView* view) {
    record(std::string("sidebar shows ") + [[view description] UTF8String]);
}

void setNeedsDisplay(id, SEL, BOOL needs) {
    record(needs ? "sidebar is drawn anew" : "sidebar is left as it is");
}

std::string cornersOf(const NSRect& area) {
    std::string text;
    for (const CGFloat number : {NSMinX(area), NSMinY(area), NSWidth(area), NSHeight(area)}) {
        text += " " + std::to_string(int(number));
    }
    return text;
}

void fillRect(id, SEL, NSRect area) {
    record("filled" + cornersOf(area));
}

id roundedPath(id, SEL, NSRect area, CGFloat, CGFloat) {
    const std::string name = "rounded" + cornersOf(area);
    return [Recorder named:name.c_str() standingFor:[NSBezierPath class]];
}

/// A sidebar of recorders.
class SidebarTest : public ::testing::Test {
  protected:
    /// What is sent when it shows these steps, sorted.
    Lines shown(const std::vector<Step>& steps) {
        takeRecorded();
        [sidebar_ setSteps:steps];
        Lines lines = takeRecorded();
        std::sort(lines.begin(), lines.end());
        return lines;
    }

    /// What is sent when it is drawn.
    Lines drawn() {
        takeRecorded();
        [sidebar_ drawRect:NSZeroRect];
        return takeRecorded();
    }

    StepsSidebar* sidebar() { return sidebar_; }

  private:
    static Class classOf(Class one) { return object_getClass(one); }
    static Recorder* color(const char* name) {
        return [Recorder named:name standingFor:[NSColor class]];
    }

    Replaced label_ {
        classOf([NSTextField class]), @selector(alloc), reinterpret_cast<IMP>(newLabel), "@@:"
    };
    Replaced picture_ {
        classOf([NSImageView class]), @selector(alloc), reinterpret_cast<IMP>(newPicture), "@@:"
    };
    Answering ofText_ { [NSColor class], @selector(labelColor), color("text colour") };
    Answering ofPaleText_ { [NSColor class], @selector(secondaryLabelColor), color("pale colour") };
    Answering ofMarkedText_ {
        [NSColor class], @selector(alternateSelectedControlTextColor), color("marked colour")
    };
    Replaced font_ {
        classOf([NSFont class]), @selector(systemFontOfSize:), reinterpret_cast<IMP>(font), "@@:d"
    };
    Replaced boldFont_ {
        classOf([NSFont class]), @selector(boldSystemFontOfSize:), reinterpret_cast<IMP>(boldFont),
            "@@:d"
    };
    Replaced image_ {
        classOf([NSImage class]), @selector(imageNamed:), reinterpret_cast<IMP>(image), "@@:@"
    };
    Replaced adding_ {
        [StepsSidebar class], @selector(addSubview:), reinterpret_cast<IMP>(addSubview), "v@:@"
    };
    Replaced drawing_ {
        [StepsSidebar class], @selector(setNeedsDisplay:), reinterpret_cast<IMP>(setNeedsDisplay),
            "v@:c"
    };
    Answering ofBackground_ {
        [NSColor class], @selector(controlBackgroundColor), color("background")
    };
    Answering ofMark_ { [NSColor class], @selector(alternateSelectedControlColor), color("mark") };
    Replaced filling_ {
        classOf([NSBezierPath class]), @selector(fillRect:), reinterpret_cast<IMP>(fillRect),
            "v@:{CGRect={CGPoint=dd}{CGSize=dd}}"
    };
    Replaced rounding_ {
        classOf([NSBezierPath class]), @selector(bezierPathWithRoundedRect:xRadius:yRadius:),
            reinterpret_cast<IMP>(roundedPath), "@@:{CGRect={CGPoint=dd}{CGSize=dd}}dd"
    };
    StepsSidebar* sidebar_ =
        [[[StepsSidebar alloc] initWithFrame:NSMakeRect(0, 0, 200, 300)] autorelease];
};

TEST_F(SidebarTest, HasACheckMarkBeforeAStepThatIsDone) {
    EXPECT_EQ(shown({{"Welcome", StepState::done, "Welcome, done"}}),
              (Lines{
                  "label init",
                  "label setAccessibilityLabel: Welcome, done",
                  "label setBezeled: NO",
                  "label setDrawsBackground: NO",
                  "label setEditable: NO",
                  "label setFont: font",
                  "label setFrame: structure",
                  "label setSelectable: NO",
                  "label setStringValue: Welcome",
                  "label setTextColor: text colour",
                  "picture init",
                  "picture setAccessibilityElement: NO",
                  "picture setFrame: structure",
                  "picture setImage: NSMenuOnStateTemplate",
                  "sidebar is drawn anew",
                  "sidebar shows label",
                  "sidebar shows picture",
              }));
}

/// What is sent for a step with a number before its name.
Lines numbered(const std::string& font, const std::string& color) {
    return {
        "label init",
        "label init",
        "label setAccessibilityElement: NO",
        "label setAccessibilityLabel: Spoken",
        "label setAlignment: " + std::to_string(int(NSTextAlignmentCenter)),
        "label setBezeled: NO",
        "label setBezeled: NO",
        "label setDrawsBackground: NO",
        "label setDrawsBackground: NO",
        "label setEditable: NO",
        "label setEditable: NO",
        "label setFont: " + font,
        "label setFont: " + font,
        "label setFrame: structure",
        "label setFrame: structure",
        "label setSelectable: NO",
        "label setSelectable: NO",
        "label setStringValue: 1",
        "label setStringValue: Name",
        "label setTextColor: " + color,
        "label setTextColor: " + color,
        "sidebar is drawn anew",
        "sidebar shows label",
        "sidebar shows label",
    };
}

TEST_F(SidebarTest, MarksTheCurrentStep) {
    EXPECT_EQ(shown({{"Name", StepState::current, "Spoken"}}),
              numbered("bold font", "marked colour"));
}

TEST_F(SidebarTest, HasWhatIsToComeInPaleText) {
    EXPECT_EQ(shown({{"Name", StepState::toCome, "Spoken"}}), numbered("font", "pale colour"));
}

TEST_F(SidebarTest, LetsGoOfItsRowsBeforeItEnds) {
    StepsSidebar* another = [[StepsSidebar alloc] initWithFrame:NSZeroRect];
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    [another setSteps:{{"Name", StepState::toCome, "Spoken"}}];
    [pool release];
    EXPECT_EQ([Recorder livingNamed:"label"], 2);
    int left = -1;
    const NotedDealloc ending([NSView class], [&] { left = [Recorder livingNamed:"label"]; });
    [another release];
    EXPECT_EQ(left, 0);
}

TEST_F(SidebarTest, NumbersTheStepsAndTakesTheOldOnesAway) {
    const Step step{"Name", StepState::toCome, "Spoken"};
    const auto has = [](const Lines& lines, const std::string& line) {
        return std::count(lines.begin(), lines.end(), line);
    };
    EXPECT_EQ(has(shown({step, step}), "label setStringValue: 2"), 1);
    const Lines lines = shown({step});
    EXPECT_EQ(has(lines, "label removeFromSuperview"), 4);
    EXPECT_EQ(has(lines, "label setStringValue: 2"), 0);
}

TEST_F(SidebarTest, LetsGoOfWhatItShows) {
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    StepsSidebar* sidebar = [[StepsSidebar alloc] initWithFrame:NSZeroRect];
    [sidebar setSteps:{{"Name", StepState::done, "Spoken"}, {"Name", StepState::done, "Spoken"}}];
    [sidebar setSteps:{{"Name", StepState::current, "Spoken"}}];
    [pool release];
    EXPECT_EQ([Recorder livingNamed:"label"], 2);
    EXPECT_EQ([Recorder livingNamed:"picture"], 0);
    [sidebar release];
    EXPECT_EQ([Recorder livingNamed:"label"], 0);
}

TEST_F(SidebarTest, IsDrawnWithTheCurrentStepsAreaMarked) {
    EXPECT_TRUE([sidebar() isOpaque]);
    shown({{"Welcome", StepState::done, "Spoken"}, {"Name", StepState::current, "Spoken"}});
    EXPECT_EQ(drawn(), (Lines{"background set", "filled 0 0 200 300", "mark set",
                              "rounded 12 226 176 30 fill"}));
    shown({{"Name", StepState::current, "Spoken"}, {"Finish", StepState::toCome, "Spoken"}});
    EXPECT_EQ(drawn().back(), "rounded 12 262 176 30 fill");
}

}  // namespace

}  // namespace morvella::cocoa_tests
