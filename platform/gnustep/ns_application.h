#pragma once

#import <AppKit/AppKit.h>

@interface CompletedApplication : NSApplication
@end
