// GNUstep clips a text that is to be shortened in its middle, and measures a text that is to be
// wrapped as if it were not.

#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSTheme.h>

@interface NSTextFieldCell (Complement)
- (NSSize)cellSizeForBounds:(NSRect)bounds;
- (void)drawInteriorWithFrame:(NSRect)frame inView:(NSView*)view;
@end

namespace {

// What remains when everything but `kept` characters around the ends gives way to an ellipsis.
NSAttributedString* withoutMiddle(NSAttributedString* text, NSUInteger kept) {
    NSString* string = [text string];
    const NSUInteger head = kept - kept / 2;
    const NSUInteger tail = [string length] - kept / 2;
    NSRange gap = NSMakeRange(head, tail - head);
    if (gap.length > 0) {
        gap = [string rangeOfComposedCharacterSequencesForRange:gap];
    }
    NSMutableAttributedString* result = [[text mutableCopy] autorelease];
    [result replaceCharactersInRange:gap withString:@"…"];
    return result;
}

NSAttributedString* shortened(NSAttributedString* text, CGFloat width) {
    NSAttributedString* result = text;
    for (NSUInteger kept = [text length]; kept > 0 && [result size].width > width; --kept) {
        result = withoutMiddle(text, kept - 1);
    }
    return result;
}

}  // namespace

@implementation NSTextFieldCell (Complement)

- (NSSize)cellSizeForBounds:(NSRect)bounds {
    if (![self wraps] || [self isBordered] || [self isBezeled]) {
        return [super cellSizeForBounds:bounds];
    }
    return [[self attributedStringValue] boundingRectWithSize:bounds.size
                                                      options:NSStringDrawingUsesLineFragmentOrigin]
        .size;
}

- (void)drawInteriorWithFrame:(NSRect)frame inView:(NSView*)view {
    if (_cell.in_editing) {
        [[GSTheme theme] drawEditorForCell:self withFrame:frame inView:view];
        return;
    }
    const NSRect rect = [self titleRectForBounds:frame];
    NSAttributedString* text = [self attributedStringValue];
    if ([self lineBreakMode] == NSLineBreakByTruncatingMiddle) {
        text = shortened(text, NSWidth(rect));
    }
    [text drawInRect:rect];
}

@end
