#pragma once

#import <AppKit/AppKit.h>

@class CompletedAlert;

/// An alert as the user sees it. It has the size that its content needs.
@interface AlertBox : NSView {
    CompletedAlert* _alert;
    NSMutableArray* _keyLoop;
    NSUInteger _focus;
    id _target;
    SEL _action;
}

/// `width` is how wide the box may be at most, in points.
- (instancetype)initWithAlert:(CompletedAlert*)alert width:(CGFloat)width;

/// `action` is sent to `target`, which is not retained, with the button that answers the alert.
- (void)setTarget:(id)target action:(SEL)action;

/// Return and the other buttons' own keys press a button, Tab moves on to the next control and
/// Space presses that one. All other keys do nothing.
- (void)takeKey:(NSEvent*)event;

@end
