#pragma once

#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSTheme.h>

/// Flat, rounded controls in the palette's colours, and custom boxes, which GNUstep does not draw.
/// Set it before the interface file is loaded.
@interface MorvellaTheme : GSTheme
@end
