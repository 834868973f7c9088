#import <AppKit/AppKit.h>

/// GNUstep's interface file loader does not know the bold system font.
@implementation NSFont (Complement)

- (id)initWithCoder:(NSCoder*)coder {
    const CGFloat size = [coder decodeFloatForKey:@"NSSize"];
    NSString* metaFont = [coder decodeObjectForKey:@"metaFont"];
    [self release];
    return [([metaFont isEqual:@"systemBold"] ? [NSFont boldSystemFontOfSize:size]
                                              : [NSFont systemFontOfSize:size]) retain];
}

@end
