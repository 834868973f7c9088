// What the installer's window shows. See inspector.mm.

#pragma once

#import <AppKit/AppKit.h>

/// As values that can be written as JSON; empty as long as there is no window.
NSDictionary* describeWindow();

/// In the uppermost sheet or else on the page; nil if there is none.
NSButton* buttonTitled(NSString* title);
