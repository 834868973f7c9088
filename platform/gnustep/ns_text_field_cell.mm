#import <AppKit/AppKit.h>

/// GNUstep measures a text that is to be wrapped as if it were not.
@implementation NSTextFieldCell (Complement)

- (NSSize)cellSizeForBounds:(NSRect)bounds {
    if (![self wraps] || [self isBordered] || [self isBezeled]) {
        return [super cellSizeForBounds:bounds];
    }
    return [[self attributedStringValue] boundingRectWithSize:bounds.size
                                                      options:NSStringDrawingUsesLineFragmentOrigin]
        .size;
}

@end
