#import "alert_box.h"

#include <algorithm>

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
constexpr CGFloat cornerRadius = 10;

/// Gives `control` the height that its text needs in lines of at most `width`.
void wrap(NSControl* control, NSFont* font, CGFloat width) {
    [control setFont:font];
    [[control cell] setWraps:YES];
    const NSSize size = [[control cell] cellSizeForBounds:NSMakeRect(0, 0, width, 10000)];
    [control setFrameSize:NSMakeSize(std::min(width, static_cast<CGFloat>(ceil(size.width))),
                                     ceil(size.height))];
}

NSTextField* label(NSString* text, NSFont* font, CGFloat width) {
    NSTextField* field = [[[NSTextField alloc] initWithFrame:NSZeroRect] autorelease];
    [field setStringValue:text ? text : @""];
    [field setEditable:NO];
    [field setSelectable:NO];
    [field setBezeled:NO];
    [field setDrawsBackground:NO];
    wrap(field, font, width);
    [field setFrameSize:NSMakeSize(width, NSHeight([field frame]))];
    return field;
}

NSImageView* picture(NSImage* image, NSRect frame) {
    NSImageView* view = [[[NSImageView alloc] initWithFrame:frame] autorelease];
    [view setImage:image];
    [view setImageScaling:NSImageScaleProportionallyUpOrDown];
    return view;
}

CGFloat widthOf(NSButton* button) {
    return std::max(buttonWidth, static_cast<CGFloat>(ceil([[button cell] cellSize].width)) + 24);
}

}  // namespace

@implementation AlertBox

- (instancetype)initWithAlert:(CompletedAlert*)alert
                        width:(CGFloat)width
                       target:(id)target
                       action:(SEL)action {
    self = [super initWithFrame:NSZeroRect];
    if (self) {
        [self setAutoresizesSubviews:NO];
        _alert = [alert retain];
        CGFloat buttons = ([_alert showsHelp] ? buttonHeight : -gap) + 2 * margin;
        for (NSButton* button in [_alert buttons]) {
            [button setTarget:target];
            [button setAction:action];
            buttons += gap + widthOf(button);
        }
        [self layOutWithWidth:std::min(std::max(usualWidth, buttons), width - 2 * margin)];
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

- (void)layOutWithWidth:(CGFloat)width {
    const CGFloat left = shadow + margin + iconSize + iconGap;
    const CGFloat textWidth = width + shadow - margin - left;
    CGFloat top = shadow + margin;
    [self addIconAt:NSMakePoint(shadow + margin, top)];
    top = [self add:label([_alert messageText], [NSFont boldSystemFontOfSize:13], textWidth)
                 at:NSMakePoint(left, top)];
    if ([[_alert informativeText] length] > 0) {
        top = [self add:label([_alert informativeText], [NSFont systemFontOfSize:12], textWidth)
                     at:NSMakePoint(left, top + gap / 2)];
    }
    if ([_alert showsSuppressionButton]) {
        wrap([_alert suppressionButton], [NSFont systemFontOfSize:12], textWidth);
        top = [self add:[_alert suppressionButton] at:NSMakePoint(left, top + gap)];
    }
    if ([_alert accessoryView]) {
        top = [self add:[_alert accessoryView] at:NSMakePoint(left, top + gap)];
    }
    top = std::max(top, shadow + margin + iconSize) + margin;
    [self addButtonsAt:NSMakePoint(width + shadow - margin, top)];
    [self setFrameSize:NSMakeSize(width + 2 * shadow, top + buttonHeight + margin + shadow)];
}

/// Returns the lower edge of `view`.
- (CGFloat)add:(NSView*)view at:(NSPoint)origin {
    [view setFrameOrigin:origin];
    [self addSubview:view];
    return NSMaxY([view frame]);
}

/// The alert's own icon, else the application's, with a sign on it if the alert is critical.
- (void)addIconAt:(NSPoint)origin {
    NSImage* icon = [_alert icon] ? [_alert icon] : [NSApp applicationIconImage];
    const NSRect frame = NSMakeRect(origin.x, origin.y, iconSize, iconSize);
    [self addSubview:picture(icon, frame)];
    if ([_alert alertStyle] == NSCriticalAlertStyle) {
        NSImage* sign = [NSImage imageNamed:@"AlertCaution"];
        [self addSubview:picture(sign, NSMakeRect(NSMidX(frame), NSMidY(frame) + 2, 27, 25))];
    }
}

/// `corner` is the upper right one.
- (void)addButtonsAt:(NSPoint)corner {
    for (NSButton* button in [_alert buttons]) {
        const CGFloat width = widthOf(button);
        [button setBezelStyle:NSRoundedBezelStyle];
        [button setFrame:NSMakeRect(corner.x - width, corner.y, width, buttonHeight)];
        [self addSubview:button];
        corner.x -= width + gap;
    }
    if ([_alert showsHelp]) {
        NSButton* help = [[[NSButton alloc]
            initWithFrame:NSMakeRect(shadow + margin, corner.y, buttonHeight, buttonHeight)]
            autorelease];
        [help setBezelStyle:NSRoundedBezelStyle];
        [help setTitle:@"?"];
        [help setTarget:self];
        [help setAction:@selector(showHelp:)];
        [self addSubview:help];
    }
}

/// Tab goes through the controls in the order in which they were added.
- (void)closeKeyViewLoop {
    NSView* first = nil;
    NSView* last = nil;
    for (NSView* view in [self subviews]) {
        if ([view acceptsFirstResponder]) {
            first = first ? first : view;
            [last setNextKeyView:view];
            last = view;
        }
    }
    [last setNextKeyView:first];
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
    [[NSColor windowBackgroundColor] set];
    [[NSBezierPath bezierPathWithRoundedRect:box xRadius:cornerRadius yRadius:cornerRadius] fill];
}

@end
