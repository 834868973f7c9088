#import "alert_box.h"

#include <algorithm>

namespace {

constexpr CGFloat boxWidth = 460;
constexpr CGFloat margin = 20;
constexpr CGFloat gap = 12;
constexpr CGFloat iconSize = 56;
constexpr CGFloat textLeft = margin + iconSize + 16;
constexpr CGFloat buttonHeight = 28;
constexpr CGFloat buttonWidth = 88;

/// Gives `control` the height that its text needs beside the icon.
NSControl* wrapped(NSControl* control, NSFont* font) {
    constexpr CGFloat width = boxWidth - margin - textLeft;
    [control setFont:font];
    [[control cell] setWraps:YES];
    const NSSize size = [[control cell] cellSizeForBounds:NSMakeRect(0, 0, width, 10000)];
    [control setFrameSize:NSMakeSize(width, ceil(size.height))];
    return control;
}

NSControl* label(NSString* text, NSFont* font) {
    NSTextField* field = [[[NSTextField alloc] initWithFrame:NSZeroRect] autorelease];
    [field setStringValue:text ? text : @""];
    [field setEditable:NO];
    [field setSelectable:NO];
    [field setBezeled:NO];
    [field setDrawsBackground:NO];
    return wrapped(field, font);
}

NSImageView* picture(NSImage* image, NSRect frame) {
    NSImageView* view = [[[NSImageView alloc] initWithFrame:frame] autorelease];
    [view setImage:image];
    [view setImageScaling:NSImageScaleProportionallyUpOrDown];
    return view;
}

}  // namespace

@implementation AlertBox

- (instancetype)initWithAlert:(NSAlert*)alert target:(id)target action:(SEL)action {
    self = [super initWithFrame:NSZeroRect];
    if (self) {
        [self setAutoresizesSubviews:NO];
        _alert = [alert retain];
        [self addIcon];
        const CGFloat top = std::max([self addTexts], margin + iconSize) + margin;
        [self addButtonsAt:top target:target action:action];
        [self setFrameSize:NSMakeSize(boxWidth, top + buttonHeight + margin)];
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

/// The application's icon, with a sign on it if the alert is critical.
- (void)addIcon {
    const NSRect frame = NSMakeRect(margin, margin, iconSize, iconSize);
    [self addSubview:picture([NSApp applicationIconImage], frame)];
    if ([_alert alertStyle] == NSCriticalAlertStyle) {
        NSImage* sign = [NSImage imageNamed:@"AlertCaution"];
        [self addSubview:picture(sign, NSMakeRect(NSMidX(frame), NSMidY(frame) + 2, 27, 25))];
    }
}

/// Puts everything but the buttons below one another; returns where it ends.
- (CGFloat)addTexts {
    NSMutableArray* views = [NSMutableArray array];
    [views addObject:label([_alert messageText], [NSFont boldSystemFontOfSize:13])];
    if ([[_alert informativeText] length] > 0) {
        [views addObject:label([_alert informativeText], [NSFont systemFontOfSize:12])];
    }
    if ([_alert showsSuppressionButton]) {
        [views addObject:wrapped([_alert suppressionButton], [NSFont systemFontOfSize:12])];
    }
    if ([_alert accessoryView]) {
        [views addObject:[_alert accessoryView]];
    }
    CGFloat top = margin;
    for (NSView* view in views) {
        [view setFrameOrigin:NSMakePoint(textLeft, top)];
        [self addSubview:view];
        top = NSMaxY([view frame]) + gap;
    }
    return top - gap;
}

/// From the right to the left, with the one for help, which does nothing here, in the left corner.
- (void)addButtonsAt:(CGFloat)top target:(id)target action:(SEL)action {
    CGFloat right = boxWidth - margin;
    for (NSButton* button in [_alert buttons]) {
        const CGFloat text = [[button cell] cellSize].width + 24;
        const CGFloat width = std::max(buttonWidth, static_cast<CGFloat>(ceil(text)));
        [button setTarget:target];
        [button setAction:action];
        [self add:button frame:NSMakeRect(right - width, top, width, buttonHeight)];
        right -= width + gap;
    }
    if ([_alert showsHelp]) {
        NSButton* help = [[[NSButton alloc] init] autorelease];
        [help setTitle:@"?"];
        [self add:help frame:NSMakeRect(margin, top, buttonHeight, buttonHeight)];
    }
}

- (void)add:(NSButton*)button frame:(NSRect)frame {
    [button setBezelStyle:NSRoundedBezelStyle];
    [button setFrame:frame];
    [self addSubview:button];
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

- (void)drawRect:(NSRect)rect {
    [[NSColor windowBackgroundColor] set];
    [[NSBezierPath bezierPathWithRoundedRect:[self bounds] xRadius:10 yRadius:10] fill];
}

@end
