#pragma once

#import <AppKit/AppKit.h>

@class CompletedAlert;

/// An alert as the user sees it. It has the size that its content needs; its controls are a key
/// view loop of their own.
@interface AlertBox : NSView {
    CompletedAlert* _alert;
}

/// `width` is how wide the box may be at most, in points. `action` is sent to `target`, which is
/// not retained, with the button that answers the alert.
- (instancetype)initWithAlert:(CompletedAlert*)alert
                        width:(CGFloat)width
                       target:(id)target
                       action:(SEL)action;

/// Presses the button that has the event's key; all other keys do nothing.
- (void)takeKey:(NSEvent*)event;

@end
