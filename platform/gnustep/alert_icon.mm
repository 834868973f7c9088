#import "alert_icon.h"

namespace {

void drawMark(NSString* mark, NSRect area, NSColor* color, CGFloat size) {
    NSDictionary* attributes = @{
        NSFontAttributeName : [NSFont boldSystemFontOfSize:size],
        NSForegroundColorAttributeName : color
    };
    const NSSize extent = [mark sizeWithAttributes:attributes];
    [mark drawAtPoint:NSMakePoint(NSMidX(area) - extent.width / 2, NSMidY(area) - extent.height / 2)
        withAttributes:attributes];
}

/// A triangle that stands on its base, with rounded corners.
NSBezierPath* trianglePath(NSRect area) {
    const CGFloat radius = area.size.width * 0.09;
    NSBezierPath* path = [NSBezierPath bezierPath];
    const NSPoint top = NSMakePoint(NSMidX(area), NSMaxY(area));
    const NSPoint right = NSMakePoint(NSMaxX(area), NSMinY(area));
    const NSPoint left = NSMakePoint(NSMinX(area), NSMinY(area));
    [path moveToPoint:NSMakePoint(NSMidX(area), NSMinY(area))];
    [path appendBezierPathWithArcFromPoint:right toPoint:top radius:radius];
    [path appendBezierPathWithArcFromPoint:top toPoint:left radius:radius];
    [path appendBezierPathWithArcFromPoint:left toPoint:right radius:radius];
    [path closePath];
    return path;
}

void drawWarningSign(NSRect area) {
    NSBezierPath* triangle = trianglePath(area);
    [[NSColor colorWithCalibratedRed:0.98 green:0.74 blue:0.10 alpha:1] set];
    [triangle fill];
    [[NSColor colorWithCalibratedRed:0.80 green:0.56 blue:0.02 alpha:1] set];
    [triangle setLineWidth:1];
    [triangle stroke];

    NSColor* ink = [NSColor colorWithCalibratedWhite:0.13 alpha:1];
    [ink set];
    const CGFloat unit = area.size.height / 20;
    NSBezierPath* bar = [NSBezierPath bezierPath];
    [bar moveToPoint:NSMakePoint(NSMidX(area) - 1.3 * unit, NSMinY(area) + 13.5 * unit)];
    [bar lineToPoint:NSMakePoint(NSMidX(area) + 1.3 * unit, NSMinY(area) + 13.5 * unit)];
    [bar lineToPoint:NSMakePoint(NSMidX(area) + 0.7 * unit, NSMinY(area) + 6.2 * unit)];
    [bar lineToPoint:NSMakePoint(NSMidX(area) - 0.7 * unit, NSMinY(area) + 6.2 * unit)];
    [bar closePath];
    [bar fill];
    [[NSBezierPath
        bezierPathWithOvalInRect:NSMakeRect(NSMidX(area) - 1.2 * unit, NSMinY(area) + 2.2 * unit,
                                            2.4 * unit, 2.4 * unit)] fill];
}

void drawNoticeSign(NSRect area) {
    [[NSColor alternateSelectedControlColor] set];
    [[NSBezierPath bezierPathWithOvalInRect:NSInsetRect(area, 2, 2)] fill];
    drawMark(@"i", area, [NSColor whiteColor], area.size.height * 0.6);
}

}  // namespace

@implementation AlertIcon

- (instancetype)initWithAlert:(NSAlert*)alert frame:(NSRect)frame {
    self = [super initWithFrame:frame];
    if (self) {
        _style = [alert alertStyle];
        _image = [([alert icon] ? [alert icon] : [self applicationIcon]) retain];
    }
    return self;
}

- (void)dealloc {
    [_image release];
    [super dealloc];
}

/// nil if the application has no icon of its own.
- (NSImage*)applicationIcon {
    NSString* name = [[[NSBundle mainBundle] infoDictionary] objectForKey:@"NSIcon"];
    return name ? [NSImage imageNamed:name] : nil;
}

- (void)drawRect:(NSRect)rect {
    const NSRect all = [self bounds];
    const BOOL critical = _style == NSCriticalAlertStyle;
    if (_image) {
        [_image drawInRect:all fromRect:NSZeroRect operation:NSCompositeSourceOver fraction:1];
    }
    if (critical) {
        drawWarningSign(_image ? NSMakeRect(NSMidX(all), NSMinY(all) + 1, all.size.width / 2 - 1,
                                            all.size.height / 2.2)
                               : NSInsetRect(all, 2, 4));
    } else if (!_image) {
        drawNoticeSign(all);
    }
}

@end
