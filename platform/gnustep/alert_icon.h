#pragma once

#import <AppKit/AppKit.h>

/// The picture beside an alert's text: its own icon, else the application's, with a warning sign if
/// the alert is critical.
@interface AlertIcon : NSView {
    NSImage* _image;
    NSAlertStyle _style;
}
- (instancetype)initWithAlert:(NSAlert*)alert frame:(NSRect)frame;
@end
