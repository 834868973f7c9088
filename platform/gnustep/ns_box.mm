#import <AppKit/AppKit.h>

/// GNUstep's interface file loader ignores the appearance of custom boxes.
@implementation NSBox (Complement)

- (id)initWithCoder:(NSCoder*)coder {
    self = [super initWithCoder:coder];
    [self setBoxType:static_cast<NSBoxType>([coder decodeIntForKey:@"NSBoxType"])];
    [self setBorderType:static_cast<NSBorderType>([coder decodeIntForKey:@"NSBorderType"])];
    [self
        setTitlePosition:static_cast<NSTitlePosition>([coder decodeIntForKey:@"NSTitlePosition"])];
    [self setFillColor:[coder decodeObjectForKey:@"fillColor"]];
    [self setBorderColor:[coder decodeObjectForKey:@"borderColor"]];
    [self setBorderWidth:[self borderType] == NSNoBorder ? 0 : 1];
    [self setCornerRadius:[coder decodeFloatForKey:@"cornerRadius"]];
    [self setContentView:[coder decodeObjectForKey:@"NSContentView"]];
    return self;
}

@end
