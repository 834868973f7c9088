#pragma once

#import "complement.h"

@class AlertBox;
@class CompletedAlert;

/// Lies over the page of a window while the window has a sheet: dims the page, takes the mouse and
/// the keys away from it, shows one alert and lets the others wait.
@interface SheetCover : NSView {
    NSMutableArray* _waiting;
    AlertBox* _box;
    BOOL _answering;
}

/// The cover that `window` has, a new one if it has none.
+ (SheetCover*)coverOfWindow:(NSWindow*)window;

/// The cover that `window` has, or nil.
+ (SheetCover*)existingCoverOfWindow:(NSWindow*)window;

/// Shows `alert` now, or later if another is shown. Critical alerts go in front of waiting others.
- (void)beginSheet:(CompletedAlert*)alert completionHandler:(AlertCompletionHandler)handler;

@end
