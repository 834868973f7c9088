#pragma once

// GNUstep's AppKit, and what it lacks of Apple's.

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
/// `handler` gets each such event before the application does, and returns the event to send or
/// nil.
+ (id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(LocalEventHandler)handler;
@end

typedef void (^AlertCompletionHandler)(NSModalResponse response);

@interface NSAlert (Complement)
/// Shows the alert inside `window` and returns at once. A second sheet is queued; a critical one is
/// shown on top of a non-critical one. The sheet stays until its handler has returned, which may
/// begin others.
- (void)beginSheetModalForWindow:(NSWindow*)window
               completionHandler:(AlertCompletionHandler)handler;
@property(nonatomic) BOOL showsSuppressionButton;
@property(nonatomic, readonly) NSButton* suppressionButton;
@property(nonatomic, retain) NSView* accessoryView;
@end

@interface NSWindow (Complement)
/// There are no tabs here.
+ (void)setAllowsAutomaticWindowTabbing:(BOOL)allows;
/// Nothing to set: a sheet never blocks termination here.
- (void)setPreventsApplicationTerminationWhenModal:(BOOL)prevents;
@end

// Nothing speaks here: what is set for accessibility is not kept.

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
