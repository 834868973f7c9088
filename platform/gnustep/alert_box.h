#pragma once

#import <AppKit/AppKit.h>

/// An alert as the user sees it. It has the size that its content needs; its controls are a key
/// view loop of their own.
@interface AlertBox : NSView {
    NSAlert* _alert;
}

/// `action` is sent to `target`, which is not retained, with the button that answers the alert.
- (instancetype)initWithAlert:(NSAlert*)alert target:(id)target action:(SEL)action;

/// Presses the button that has the event's key; all other keys do nothing.
- (void)takeKey:(NSEvent*)event;

@end
