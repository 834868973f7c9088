#pragma once

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <list>
#include <string>

#import "platform/cocoa/MorvellaInstallerViewController.h"

#include "cocoa/recorder.h"

@interface MorvellaInstallerViewController (CalledByThePlatform)
- (void)windowIsOnScreen;
@end

/// Keeps its handler in `answer`, as the platform does. No alert can be run.
@interface TestSheet : Recorder
@end

/// Its description is "door".
@interface TestDoor : MorvellaInstallerViewController
@end

namespace morvella::cocoa_tests {

/// The door whose life-cycle methods are called at awkward moments, as AppKit may.
extern NSViewController* disturbed;
extern bool pageChangeRaises;
/// Answers the sheet that began last.
extern void (^answer)(NSModalResponse);
void forgetSheet();

/// A door with its pages in a window. The bundle has no resources, so the initial page ends in a
/// sheet, as does the settings page.
class DoorLifeCycleTest : public ::testing::Test {
  protected:
    DoorLifeCycleTest();
    ~DoorLifeCycleTest() override;

    TestDoor* makeDoor();

    /// Loads the door and brings its window on the screen.
    void start();

    /// What was recorded, apart from getters, resources and the contents of sheets.
    static Lines steps();
    static long times(const std::string& line, const Lines& lines = takeRecorded()) {
        return std::ranges::count(lines, line);
    }

    Recorder* window = [Recorder named:"window" standingFor:[NSWindow class]];
    Recorder* sheet;
    NSView* initial = [[[NSView alloc] initWithFrame:NSMakeRect(1, 2, 3, 4)] autorelease];
    NSView* settings = [[[NSView alloc] init] autorelease];
    NSView* installation = [[[NSView alloc] init] autorelease];
    TestDoor* door;

  private:
    std::list<Replaced> replaced_;
    Answering mainBundle_;
    Answering sheet_;
    NSView* place_;
};

}  // namespace morvella::cocoa_tests
