#pragma once

#import <AppKit/AppKit.h>

/// The class of the application.
@interface CompletedApplication : NSApplication
@end
