#pragma once

#import <AppKit/AppKit.h>

@interface NSEvent (Monitors)
/// The event that the monitors let through, or nil. Pass every event here in order: that is how
/// repeats of a held key are recognized.
+ (NSEvent*)watched:(NSEvent*)event;
@end
