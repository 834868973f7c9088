// What the installer's window shows. See inspector.mm.

#pragma once

#import <AppKit/AppKit.h>

/// Describes the window in values that JSON can represent; empty while there is no window.
NSDictionary* describeWindow();

/// In the uppermost sheet or else on the page; nil if there is none.
NSButton* buttonTitled(NSString* title);
