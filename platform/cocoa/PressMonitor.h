#pragma once

#import <AppKit/AppKit.h>

/// Keeps presses that were not meant from the buttons of pages and sheets. It does so where events
/// are delivered: VoiceOver and `performClick:` have none of their own and always work. Closing and
/// quitting are never held back.
@interface PressMonitor : NSObject

/// To be called once.
+ (void)start;

/// A page is on the screen: what was pressed before was not meant for it. Sheets are seen to.
+ (void)screenChanged;

@end
