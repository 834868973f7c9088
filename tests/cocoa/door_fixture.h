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

/// Stores its completion handler in `answer`.
@interface TestSheet : Recorder
@end

/// Appears as "door" in the record; records delayed calls instead of making them.
@interface TestDoor : MorvellaInstallerViewController
@end

namespace morvella::cocoa_tests {

/// The fixture calls this door's life-cycle methods at awkward moments, as AppKit may.
extern NSViewController* reentered;
extern bool pageChangeRaises;
/// The completion handler of the sheet that began last.
extern void (^answer)(NSModalResponse);
void forgetSheet();

/// A door with its pages in a window. The bundle has no resources and no path to Live is set, so
/// the initial page and the settings page each begin a sheet.
class DoorLifeCycleTest : public ::testing::Test {
  protected:
    DoorLifeCycleTest();
    ~DoorLifeCycleTest() override;

    TestDoor* makeDoor();

    /// Loads the door and puts its window on the screen.
    void start();

    /// The recorded lines, except getters, resources, announcements and the contents of sheets.
    static Lines steps();
    static long times(const std::string& line, const Lines& lines = takeRecorded()) {
        return std::ranges::count(lines, line);
    }

    Recorder* window = [Recorder named:"window" replacing:[NSWindow class]];
    Recorder* sheet;
    NSView* initial = [[[NSView alloc] initWithFrame:NSMakeRect(1, 2, 3, 4)] autorelease];
    NSView* settings = [[[NSView alloc] init] autorelease];
    NSView* installation = [[[NSView alloc] init] autorelease];
    TestDoor* door;

  private:
    std::list<Replaced> replaced_;
    Answering mainBundle_;
    Answering sheet_;
    NSView* container_;
};

}  // namespace morvella::cocoa_tests
