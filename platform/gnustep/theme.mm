#import "theme.h"

namespace {

constexpr CGFloat buttonRadius = 6;

bool isDefaultButton(NSCell* cell) {
    return [cell isKindOfClass:[NSButtonCell class]] && [cell isEnabled] &&
           [[(NSButtonCell*)cell keyEquivalent] isEqual:@"\r"];
}

NSBezierPath* roundedRect(NSRect rect, CGFloat radius) {
    return [NSBezierPath bezierPathWithRoundedRect:rect xRadius:radius yRadius:radius];
}

/// Converts a named colour, which cannot be blended.
NSColor* blended(NSColor* color, CGFloat fraction, NSColor* other) {
    return [[color colorUsingColorSpaceName:NSCalibratedRGBColorSpace]
        blendedColorWithFraction:fraction
                         ofColor:other];
}

NSColor* fillOfButton(NSCell* cell, bool pressed) {
    NSColor* color = isDefaultButton(cell) ? [NSColor alternateSelectedControlColor]
                     : [cell isEnabled]    ? [NSColor controlBackgroundColor]
                                           : [NSColor controlColor];
    return pressed ? blended(color, 0.15, [NSColor blackColor]) : color;
}

/// Push buttons in the interface file are 32 points high; macOS draws them smaller than that.
NSRect bodyOfButton(NSRect frame) {
    return NSHeight(frame) < 32 ? NSInsetRect(frame, 0.5, 0.5) : NSInsetRect(frame, 6.5, 3.5);
}

}  // namespace

@implementation NSButtonCell (DefaultButton)

- (NSColor*)textColor {
    return isDefaultButton(self) ? [NSColor alternateSelectedControlTextColor]
           : [self isEnabled]    ? [NSColor controlTextColor]
                                 : [NSColor disabledControlTextColor];
}

@end

@implementation MorvellaTheme

// GNUstep would draw a Return symbol in the default button.
- (void)setKeyEquivalent:(NSString*)key forButtonCell:(NSButtonCell*)cell {
}

- (void)drawButton:(NSRect)frame
                in:(NSCell*)cell
              view:(NSView*)view
             style:(int)style
             state:(GSThemeControlState)state {
    if (style != NSRoundedBezelStyle) {
        [super drawButton:frame in:cell view:view style:style state:state];
        return;
    }
    const bool pressed =
        state == GSThemeHighlightedState || state == GSThemeHighlightedFirstResponderState;
    NSBezierPath* path = roundedRect(bodyOfButton(frame), buttonRadius);
    [fillOfButton(cell, pressed) set];
    [path fill];
    [(isDefaultButton(cell) ? fillOfButton(cell, true) : [NSColor gridColor]) set];
    [path stroke];
}

- (void)drawBoxInClipRect:(NSRect)clip
                  boxType:(NSBoxType)type
               borderType:(NSBorderType)border
                   inView:(NSBox*)box {
    if (type != NSBoxCustom) {
        [super drawBoxInClipRect:clip boxType:type borderType:border inView:box];
        return;
    }
    const CGFloat half = [box borderWidth] / 2;
    NSBezierPath* path = roundedRect(NSInsetRect([box bounds], half, half), [box cornerRadius]);
    [[box fillColor] set];
    [path fill];
    if (border != NSNoBorder) {
        [[box borderColor] set];
        [path stroke];
    }
}

- (void)drawScrollerRect:(NSRect)rect
                  inView:(NSView*)view
                 hitPart:(NSScrollerPart)hitPart
            isHorizontal:(BOOL)isHorizontal {
    const NSRect knob = [static_cast<NSScroller*>(view) rectForPart:NSScrollerKnob];
    [[NSColor knobColor] set];
    [roundedRect(NSInsetRect(knob, 3, 3), 4) fill];
}

@end
