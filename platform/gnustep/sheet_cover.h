#pragma once

#import <AppKit/AppKit.h>

/// A sheet: lies over the page of a window, dims it, takes the mouse and the keys away from it and
/// shows one alert, until the handler of its answer has returned.
///
/// One sheet is shown at a time, the others wait. A critical one waits for critical ones only: it
/// comes on top of any other that is shown.
@interface SheetCover : NSView {
    NSAlert* _alert;
    AlertCompletionHandler _handler;
    NSRect _box;
    NSResponder* _focusBefore;
    BOOL _answered;
    BOOL _movesFocus;
}

/// The uppermost sheet that `window` shows, or nil.
+ (SheetCover*)coverOfWindow:(NSWindow*)window;

+ (void)beginSheet:(NSAlert*)alert
             onWindow:(NSWindow*)window
    completionHandler:(AlertCompletionHandler)handler;

@end
