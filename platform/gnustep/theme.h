#pragma once

#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSTheme.h>

/// Flat, rounded controls in the palette's colours, in place of the bevelled ones GNUstep draws.
/// Draws custom boxes too, which GNUstep leaves empty. Set it before the interface file is loaded.
@interface MorvellaTheme : GSTheme
@end
