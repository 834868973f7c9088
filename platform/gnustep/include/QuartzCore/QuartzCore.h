#pragma once

#import <Foundation/NSObject.h>

@interface CATransaction : NSObject

/// Returns when the screen shows what the windows have drawn.
+ (void)flush;

@end
