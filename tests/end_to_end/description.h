// What the installer's window shows. See inspector.mm.

#pragma once

#import <AppKit/AppKit.h>

/// Describes the window in values that JSON can represent; empty while there is no window.
NSDictionary* describeWindow();

/// Looks in the uppermost sheet or, without one, on the page; nil if there is no such button.
NSButton* buttonTitled(NSString* title);
