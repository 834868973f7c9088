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
/// `handler` is given every such event before the application sends it, and returns what is to be
/// sent in its place, or nil.
+ (id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(LocalEventHandler)handler;
+ (void)removeMonitor:(id)monitor;
@end

typedef void (^AlertCompletionHandler)(NSModalResponse response);

@interface NSAlert (Complement)
/// Shows the alert inside `window` and returns at once; a window that has a sheet shows it later,
/// but a critical one on top of any other that is not. The handler runs on the main thread; the
/// sheet stays until it has returned. It may begin others, and never runs if the window goes first.
- (void)beginSheetModalForWindow:(NSWindow*)window
               completionHandler:(AlertCompletionHandler)handler;
@property(nonatomic) BOOL showsSuppressionButton;
@property(nonatomic, readonly) NSButton* suppressionButton;
@property(nonatomic, retain) NSView* accessoryView;
@end

@interface NSWindow (Complement)
/// There are no tabs here.
+ (void)setAllowsAutomaticWindowTabbing:(BOOL)allows;
/// A sheet never keeps the application from ending here, so there is nothing to set.
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
- (BOOL)isViewLoaded;
- (void)viewDidLoad;
- (void)viewDidAppear;
@end
