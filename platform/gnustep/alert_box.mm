#import "alert_box.h"

#include <algorithm>

#import "alert_icon.h"
#import "complement.h"
#import "ns_alert.h"

namespace {

constexpr CGFloat usualWidth = 460;
constexpr CGFloat shadow = 16;
constexpr CGFloat margin = 20;
constexpr CGFloat iconSize = 56;
constexpr CGFloat iconGap = 16;
constexpr CGFloat gap = 12;
constexpr CGFloat buttonHeight = 28;
constexpr CGFloat buttonWidth = 88;
constexpr CGFloat helpSize = 22;
constexpr CGFloat cornerRadius = 10;

NSTextField* label(NSString* text, NSFont* font, CGFloat width) {
    NSTextField* field = [[[NSTextField alloc] initWithFrame:NSZeroRect] autorelease];
    [field setStringValue:text ? text : @""];
    [field setFont:font];
    [field setTextColor:[NSColor controlTextColor]];
    [field setEditable:NO];
    [field setSelectable:NO];
    [field setBezeled:NO];
    [field setBordered:NO];
    [field setDrawsBackground:NO];
    [[field cell] setWraps:YES];
    const NSSize size = [[field cell] cellSizeForBounds:NSMakeRect(0, 0, width, 10000)];
    [field setFrameSize:NSMakeSize(width, ceil(size.height))];
    return field;
}

}  // namespace

/// A round button with a question mark.
@interface AlertHelpButton : NSButton
@end

@implementation AlertHelpButton

- (void)drawRect:(NSRect)rect {
    NSBezierPath* circle = [NSBezierPath bezierPathWithOvalInRect:NSInsetRect([self bounds], 1, 1)];
    [([[self cell] isHighlighted] ? [NSColor controlShadowColor]
                                  : [NSColor controlBackgroundColor]) set];
    [circle fill];
    [[NSColor controlShadowColor] set];
    [circle stroke];
    NSDictionary* attributes = @{
        NSFontAttributeName : [NSFont boldSystemFontOfSize:13],
        NSForegroundColorAttributeName : [NSColor controlTextColor]
    };
    const NSSize size = [@"?" sizeWithAttributes:attributes];
    [@"?" drawAtPoint:NSMakePoint(NSMidX([self bounds]) - size.width / 2,
                                  NSMidY([self bounds]) - size.height / 2)
        withAttributes:attributes];
}

@end

@implementation AlertBox

- (instancetype)initWithAlert:(CompletedAlert*)alert
                        width:(CGFloat)width
                       target:(id)target
                       action:(SEL)action {
    self = [super initWithFrame:NSZeroRect];
    if (self) {
        [self setAutoresizesSubviews:NO];
        _alert = [alert retain];
        for (NSButton* button in [_alert buttons]) {
            [button setTarget:target];
            [button setAction:action];
        }
        const CGFloat wanted = std::max(usualWidth, [self widthOfButtons] + 2 * margin);
        [self layOutWithWidth:std::min(wanted, width - 2 * margin)];
        [self closeKeyViewLoop];
    }
    return self;
}

- (void)dealloc {
    [_alert release];
    [super dealloc];
}

- (BOOL)isFlipped {
    return YES;
}

#pragma mark Layout

- (CGFloat)widthOfButton:(NSButton*)button {
    return std::max(buttonWidth, static_cast<CGFloat>(ceil([[button cell] cellSize].width)) + 24);
}

/// The row of buttons, with the help button at its left end.
- (CGFloat)widthOfButtons {
    CGFloat width = [_alert showsHelp] ? helpSize : -gap;
    for (NSButton* button in [_alert buttons]) {
        width += gap + [self widthOfButton:button];
    }
    return width;
}

- (void)layOutWithWidth:(CGFloat)width {
    const CGFloat left = shadow + margin + iconSize + iconGap;
    const CGFloat textWidth = width + shadow - margin - left;
    const NSRect iconFrame = NSMakeRect(shadow + margin, shadow + margin, iconSize, iconSize);
    [self addSubview:[[[AlertIcon alloc] initWithAlert:_alert frame:iconFrame] autorelease]];

    CGFloat top = shadow + margin;
    top = [self add:label([_alert messageText], [NSFont boldSystemFontOfSize:13], textWidth)
                 at:NSMakePoint(left, top)];
    if ([[_alert informativeText] length] > 0) {
        top = [self add:label([_alert informativeText], [NSFont systemFontOfSize:12], textWidth)
                     at:NSMakePoint(left, top + gap / 2)];
    }
    if ([_alert showsSuppressionButton]) {
        top = [self addSuppressionButtonAt:NSMakePoint(left, top + gap) width:textWidth];
    }
    if ([_alert accessoryView]) {
        top = [self add:[_alert accessoryView] at:NSMakePoint(left, top + gap)];
    }
    top = std::max(top, NSMaxY(iconFrame)) + margin;
    [self addButtonsAt:NSMakePoint(width + shadow - margin, top)];
    [self setFrameSize:NSMakeSize(width + 2 * shadow, top + buttonHeight + margin + shadow)];
}

/// Returns the lower edge of `view`.
- (CGFloat)add:(NSView*)view at:(NSPoint)origin {
    [view setFrameOrigin:origin];
    [self addSubview:view];
    return NSMaxY([view frame]);
}

- (CGFloat)addSuppressionButtonAt:(NSPoint)origin width:(CGFloat)width {
    NSButton* button = [_alert suppressionButton];
    [button setFont:[NSFont systemFontOfSize:12]];
    [[button cell] setWraps:YES];
    const NSSize size = [[button cell] cellSizeForBounds:NSMakeRect(0, 0, width, 10000)];
    [button setFrameSize:NSMakeSize(std::min(width, static_cast<CGFloat>(ceil(size.width))),
                                    ceil(size.height))];
    return [self add:button at:origin];
}

/// `corner` is the upper right one.
- (void)addButtonsAt:(NSPoint)corner {
    for (NSButton* button in [_alert buttons]) {
        const CGFloat width = [self widthOfButton:button];
        [button setBezelStyle:NSRoundedBezelStyle];
        [button setFrame:NSMakeRect(corner.x - width, corner.y, width, buttonHeight)];
        [self addSubview:button];
        corner.x -= width + gap;
    }
    if ([_alert showsHelp]) {
        NSRect frame = NSMakeRect(shadow + margin, corner.y + (buttonHeight - helpSize) / 2,
                                  helpSize, helpSize);
        NSButton* help = [[[AlertHelpButton alloc] initWithFrame:frame] autorelease];
        [help setTarget:self];
        [help setAction:@selector(showHelp:)];
        [self addSubview:help];
    }
}

/// Tab goes through the controls in the order in which they were added.
- (void)closeKeyViewLoop {
    NSMutableArray* controls = [NSMutableArray array];
    for (NSView* view in [self subviews]) {
        if ([view acceptsFirstResponder]) {
            [[controls lastObject] setNextKeyView:view];
            [controls addObject:view];
        }
    }
    [[controls lastObject] setNextKeyView:[controls objectAtIndex:0]];
}

#pragma mark Answers

/// Without a delegate that knows better there is no help to show.
- (void)showHelp:(id)sender {
    if ([[_alert delegate] respondsToSelector:@selector(alertShowHelp:)]) {
        [[_alert delegate] alertShowHelp:_alert];
    }
}

- (void)takeKey:(NSEvent*)event {
    NSString* key = [event charactersIgnoringModifiers];
    if ([key isEqualToString:@"\x03"]) {
        key = @"\r";
    }
    for (NSButton* button in [_alert buttons]) {
        if ([key length] > 0 && [[button keyEquivalent] isEqualToString:key] &&
            !([button keyEquivalentModifierMask] & NSCommandKeyMask)) {
            [button performClick:self];
            return;
        }
    }
}

#pragma mark Drawing

- (void)drawRect:(NSRect)rect {
    const NSRect box = NSInsetRect([self bounds], shadow, shadow);
    for (int spread = 2; spread <= shadow; spread += 2) {
        const NSRect area = NSOffsetRect(NSInsetRect(box, -spread, -spread), 0, 3);
        [[NSColor colorWithCalibratedWhite:0 alpha:0.025] set];
        [[NSBezierPath bezierPathWithRoundedRect:area
                                         xRadius:cornerRadius + spread
                                         yRadius:cornerRadius + spread] fill];
    }
    NSBezierPath* outline = [NSBezierPath bezierPathWithRoundedRect:NSInsetRect(box, 0.5, 0.5)
                                                            xRadius:cornerRadius
                                                            yRadius:cornerRadius];
    [[NSColor windowBackgroundColor] set];
    [outline fill];
    [[NSColor colorWithCalibratedWhite:0 alpha:0.25] set];
    [outline setLineWidth:1];
    [outline stroke];
}

@end
