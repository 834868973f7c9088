#pragma once

#import <AppKit/AppKit.h>

/// What the application is an instance of here.
@interface CompletedApplication : NSApplication
@end
