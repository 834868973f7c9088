#import "pictures.h"

#import <AppKit/AppKit.h>

@interface PictureDrawing : NSObject
- (void)drawCheckMark:(NSImageRep*)picture;
- (void)drawEmptyBox:(NSImageRep*)picture;
- (void)drawCheckedBox:(NSImageRep*)picture;
@end

namespace {

// In a square of 16 points.
void strokeCheckMark(NSColor* color) {
    NSBezierPath* path = [NSBezierPath bezierPath];
    [path setLineWidth:2];
    [path setLineCapStyle:NSRoundLineCapStyle];
    [path setLineJoinStyle:NSRoundLineJoinStyle];
    [path moveToPoint:NSMakePoint(4, 8)];
    [path lineToPoint:NSMakePoint(7, 5)];
    [path lineToPoint:NSMakePoint(12, 11)];
    [color set];
    [path stroke];
}

NSBezierPath* box() {
    return [NSBezierPath bezierPathWithRoundedRect:NSMakeRect(1.5, 1.5, 13, 13)
                                           xRadius:3
                                           yRadius:3];
}

void registerPicture(NSString* name, SEL drawing, id drawer) {
    NSImage* image = [[[NSImage alloc] initWithSize:NSMakeSize(16, 16)] autorelease];
    NSCustomImageRep* picture = [[NSCustomImageRep alloc] initWithDrawSelector:drawing
                                                                      delegate:drawer];
    [picture setSize:[image size]];
    [image addRepresentation:picture];
    [picture release];
    // The register of names retains the picture.
    [image setName:name];
}

}  // namespace

@implementation PictureDrawing

- (void)drawCheckMark:(NSImageRep*)picture {
    strokeCheckMark([NSColor labelColor]);
}

- (void)drawEmptyBox:(NSImageRep*)picture {
    [[NSColor controlBackgroundColor] set];
    [box() fill];
    [[NSColor controlShadowColor] set];
    [box() stroke];
}

- (void)drawCheckedBox:(NSImageRep*)picture {
    [[NSColor alternateSelectedControlColor] set];
    [box() fill];
    strokeCheckMark([NSColor alternateSelectedControlTextColor]);
}

@end

void registerPictures() {
    PictureDrawing* drawer = [[PictureDrawing alloc] init];
    registerPicture(@"NSMenuOnStateTemplate", @selector(drawCheckMark:), drawer);
    registerPicture(@"GSSwitch", @selector(drawEmptyBox:), drawer);
    registerPicture(@"GSSwitchSelected", @selector(drawCheckedBox:), drawer);
}
