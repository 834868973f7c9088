#pragma once

#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSTheme.h>

/// Flat, rounded controls in the palette's colours. Set it before the interface file is loaded.
@interface MorvellaTheme : GSTheme
@end
