#pragma once

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#import "platform/cocoa/MorvellaInstallerViewController.h"

#include "cocoa/recorder.h"

@interface MorvellaInstallerViewController (WhatThePlatformCalls)
- (void)windowIsOnScreen;
@end

/// Holds the page. As AppKit may, it tells the door that the page has appeared while it changes it.
@interface PlaceRecorder : Recorder {
  @public
    NSViewController* door;
}
@end

/// What the doors do with their superclass around them recorded. Every page whose work starts ends
/// in a sheet on the window.
class DoorLifeCycleTest : public ::testing::Test {
  protected:
    using Replaced = morvella::cocoa_tests::Replaced;
    using Answering = morvella::cocoa_tests::Answering;

    DoorLifeCycleTest();
    ~DoorLifeCycleTest() override;

    /// Loads the door and brings its window on the screen, as the platform should.
    void start();

    /// What was recorded since the last `takeNews`.
    const morvella::cocoa_tests::Lines& news();
    void takeNews();

    /// How often what begins like this was recorded since then.
    long times(const std::string& beginning);
    long timesLoaded() { return times("bundle URLForResource:withExtension: license.rtf nil"); }
    long timesDispatched() { return times("sheet begins"); }

    /// Has the inherited `setView:` call what comes later.
    void disturb();
    /// Has the platform tell that the page has appeared while the page's work runs.
    void disturbWork();
    /// Has the inherited `setView:` raise an exception.
    void raise();
    /// Gives the door a view that no window shows.
    void hide();

    Recorder* initial = [Recorder named:"initial view" standingFor:[NSView class]];
    Recorder* settings = [Recorder named:"settings page" standingFor:[NSView class]];
    Recorder* installation = [Recorder named:"installation page" standingFor:[NSView class]];
    Recorder* text = [Recorder named:"text view" standingFor:[NSTextView class]];
    Recorder* window = [Recorder named:"window" standingFor:[NSWindow class]];

  private:
    Replaced awaking_;
    Replaced loading_;
    Replaced appearing_;
    Replaced viewing_;
    Replaced setting_;
    Replaced flushing_;
    Replaced puttingOff_;
    Replaced watching_;
    Replaced changing_;
    PlaceRecorder* place_ = static_cast<PlaceRecorder*>([PlaceRecorder named:"place"
                                                                 standingFor:[NSView class]]);
    Recorder* bundle_ = [Recorder named:"bundle" standingFor:[NSBundle class]];
    Recorder* application_ = [Recorder named:"application" standingFor:[NSApplication class]];
    Answering mainBundle_;
    Answering document_;
    Answering sheet_;
    morvella::cocoa_tests::Lines news_;

  protected:
    MorvellaInstallerViewController* door;
};
