#pragma once

/// Comes before every file of the Cocoa layer on GNUstep: after it the names exist that the layer
/// uses of Apple's frameworks and that GNUstep lacks. Each class completed has a file of its own
/// beside this.

#import <AppKit/AppKit.h>
#include <dispatch/dispatch.h>

#define NSAlertStyleWarning NSWarningAlertStyle
#define NSAlertStyleInformational NSInformationalAlertStyle
#define NSAlertStyleCritical NSCriticalAlertStyle

#define NSProgressIndicatorStyleBar NSProgressIndicatorBarStyle
#define NSProgressIndicatorStyleSpinning NSProgressIndicatorSpinningStyle

typedef void (^AlertCompletionHandler)(NSModalResponse response);

@interface NSAlert (Complement)
/// Shows the alert inside `window` and returns at once; a window that has a sheet shows it later.
/// The handler runs on the main thread after the sheet has gone, and may begin others. It never
/// runs if the window goes first.
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
/// Nothing speaks here: the label is not kept.
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
