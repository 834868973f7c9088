#pragma once

#import <AppKit/AppKit.h>

/// A sheet: covers and dims a window's page, takes its mouse and key events, and shows one alert
/// until the answer's handler has returned. Sheets are queued, but a critical one is shown on top
/// of a non-critical one.
@interface SheetCover : NSView {
    NSAlert* _alert;
    AlertCompletionHandler _handler;
    NSRect _box;
    NSResponder* _focusBefore;
    BOOL _answered;
    BOOL _movesFocus;
}

/// The topmost sheet of `window`, or nil.
+ (SheetCover*)coverOfWindow:(NSWindow*)window;

+ (void)beginSheet:(NSAlert*)alert
             onWindow:(NSWindow*)window
    completionHandler:(AlertCompletionHandler)handler;

@end
