#pragma once

#import <AppKit/AppKit.h>

/// Discards events of presses that were not meant for the page or sheet on the screen (see
/// app/press_filter.hpp). VoiceOver and `performClick:` send no events and always work. Closing and
/// quitting are never blocked.
@interface PressMonitor : NSObject

/// Call once, at start-up.
+ (void)start;

/// Call when a page has been drawn. Sheets are handled automatically.
+ (void)screenChanged;

@end
