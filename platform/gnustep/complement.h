#pragma once

/// Comes before every file of the Cocoa layer on GNUstep: after it the names exist that the layer
/// uses of Apple's frameworks and that GNUstep lacks. Each class completed has a file of its own
/// beside this.

// GNUstep's is a whole number of seconds.
#define systemUptime wholeSystemUptime
#import <Foundation/NSProcessInfo.h>
#undef systemUptime

#import <AppKit/AppKit.h>
#include <dispatch/dispatch.h>

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

@interface NSProcessInfo (Complement)
/// In seconds, on the clock of the events' times.
- (NSTimeInterval)systemUptime;
@end

typedef void (^AlertCompletionHandler)(NSModalResponse response);

@interface NSAlert (Complement)
/// Shows the alert inside `window` and returns at once; a window that has a sheet shows it later,
/// but a critical one on top of any other that is not. The handler runs on the main thread; the
/// sheet stays until it has returned. It may begin others, and never runs if the window goes first.
- (void)beginSheetModalForWindow:(NSWindow*)window
               completionHandler:(AlertCompletionHandler)handler;
- (BOOL)showsSuppressionButton;
- (void)setShowsSuppressionButton:(BOOL)shows;
- (NSButton*)suppressionButton;
- (NSView*)accessoryView;
- (void)setAccessoryView:(NSView*)view;
@end

@interface NSWindow (Complement)
/// A sheet never keeps the application from ending here, so there is nothing to set.
- (BOOL)preventsApplicationTerminationWhenModal;
- (void)setPreventsApplicationTerminationWhenModal:(BOOL)prevents;
@end

@interface NSView (Complement)
/// Nothing speaks here: neither is kept.
- (void)setAccessibilityElement:(BOOL)element;
- (void)setAccessibilityLabel:(NSString*)label;
@end

@interface NSViewController (Complement)
- (BOOL)isViewLoaded;
- (void)viewDidLoad;
- (void)viewDidAppear;
@end

@interface NSFileManager (Complement)
- (NSArray*)URLsForDirectory:(NSSearchPathDirectory)directory
                   inDomains:(NSSearchPathDomainMask)domains;
@end

@interface NSFileManager (Trash)
/// Where the item went is not told: `resultingUrl` is set to nil.
- (BOOL)trashItemAtURL:(NSURL*)url resultingItemURL:(NSURL**)resultingUrl error:(NSError**)error;
@end

typedef NSUInteger NSDataReadingOptions;
enum { NSDataReadingMappedIfSafe = 1 };

@interface NSData (Complement)
+ (instancetype)dataWithContentsOfFile:(NSString*)path
                               options:(NSDataReadingOptions)options
                                 error:(NSError**)error;
@end

@interface NSUserDefaults (Complement)
- (instancetype)initWithSuiteName:(NSString*)name;
@end
