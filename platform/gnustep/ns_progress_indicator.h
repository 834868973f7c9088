#pragma once

#import <AppKit/AppKit.h>

/// On macOS an indicator can turn in a thread of its own while the main thread waits.
@interface NSProgressIndicator (Complement)
/// Takes every visible indicator that turns one step further, on the screen too. Main thread only.
+ (void)animateVisible;
@end
