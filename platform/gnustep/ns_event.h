#pragma once

#import <AppKit/AppKit.h>

@interface NSEvent (Monitors)
/// What the monitors leave of an event that is about to be sent; nil if nothing. Each event must
/// pass here, in its order: a press of a key that is held down is told as a repeat from here on.
+ (NSEvent*)watched:(NSEvent*)event;
@end
