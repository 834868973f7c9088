// What the installer's window shows, as a dictionary that can be written as JSON. See inspector.mm.

#pragma once

#import <AppKit/AppKit.h>

NSDictionary* describeWindow();
