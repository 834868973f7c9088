// What GNUstep's loader of interface files leaves out: the colours, corners and border of custom
// boxes, and the bold system font. Categories replace the methods, because exchanging them at run
// time breaks this runtime's distributed objects (the pasteboard never answers again).

#import <AppKit/AppKit.h>

@implementation NSBox (InterfaceFile)

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

@implementation NSFont (InterfaceFile)

- (id)initWithCoder:(NSCoder*)coder {
    const CGFloat size = [coder decodeFloatForKey:@"NSSize"];
    NSString* metaFont = [coder decodeObjectForKey:@"metaFont"];
    [self release];
    return [([metaFont isEqual:@"systemBold"] ? [NSFont boldSystemFontOfSize:size]
                                              : [NSFont systemFontOfSize:size]) retain];
}

@end
