#import <AppKit/AppKit.h>

/// GNUstep measures wrapped text as a single line.
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
