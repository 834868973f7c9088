#pragma once

// GNUstep's AppKit and the parts of Apple's that it lacks.

#pragma GCC system_header

#include <Foundation/Foundation.h>

#include_next <AppKit/AppKit.h>

#define NSAlertStyleWarning NSWarningAlertStyle
#define NSAlertStyleInformational NSInformationalAlertStyle
#define NSAlertStyleCritical NSCriticalAlertStyle

#define NSProgressIndicatorStyleBar NSProgressIndicatorBarStyle
#define NSProgressIndicatorStyleSpinning NSProgressIndicatorSpinningStyle

#define NSEventTypeKeyDown NSKeyDown
#define NSEventTypeLeftMouseDown NSLeftMouseDown
#define NSEventMaskKeyDown NSKeyDownMask
#define NSEventMaskLeftMouseDown NSLeftMouseDownMask
#define NSEventModifierFlagCommand NSCommandKeyMask

typedef NSEvent* (^LocalEventHandler)(NSEvent* event);

@interface NSEvent (Complement)
/// `handler` gets each such event before the application; returns the event to send or nil.
+ (id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(LocalEventHandler)handler;
@end

typedef void (^AlertCompletionHandler)(NSModalResponse response);

@interface NSAlert (Complement)
/// Shows the alert inside `window` and returns at once. A second sheet is queued; a critical one is
/// shown on top of a non-critical one. The sheet stays until its handler, which may begin others,
/// has returned.
- (void)beginSheetModalForWindow:(NSWindow*)window
               completionHandler:(AlertCompletionHandler)handler;
@property(nonatomic) BOOL showsSuppressionButton;
@property(nonatomic, readonly) NSButton* suppressionButton;
@property(nonatomic, retain) NSView* accessoryView;
@end

@interface NSWindow (Complement)
/// Does nothing: windows have no tabs here.
+ (void)setAllowsAutomaticWindowTabbing:(BOOL)allows;
/// Does nothing: a sheet never blocks termination here.
- (void)setPreventsApplicationTerminationWhenModal:(BOOL)prevents;
@end

// There is no screen reader here: accessibility settings are ignored.

@interface NSView (Complement)
- (void)setAccessibilityElement:(BOOL)element;
- (void)setAccessibilityLabel:(NSString*)label;
@end

@interface NSCell (Complement)
- (void)setAccessibilityElement:(BOOL)element;
@end

@interface NSViewController (Complement)
- (void)viewDidLoad;
- (void)viewDidAppear;
@end
