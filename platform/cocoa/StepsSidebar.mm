#import "platform/cocoa/StepsSidebar.h"

namespace {

NSArray* stepNames() {
    return @[ @"Welcome", @"Licence", @"User Library", @"Installation", @"Finish" ];
}

/// The area that is coloured behind the current step.
NSRect areaOfStep(NSInteger step) {
    return NSMakeRect(12, 298 - 36 * CGFloat(step), 176, 30);
}

NSTextField* labelOf(NSString* text, NSFont* font, NSColor* color) {
    NSTextField* label = [[[NSTextField alloc] init] autorelease];
    [label setStringValue:text];
    [label setFont:font];
    [label setTextColor:color];
    [label setEditable:NO];
    [label setSelectable:NO];
    [label setBezeled:NO];
    [label setDrawsBackground:NO];
    return label;
}

NSTextField* centeredLabelOf(NSString* text, NSFont* font, NSColor* color) {
    NSTextField* label = labelOf(text, font, color);
    [label setAlignment:NSTextAlignmentCenter];
    return label;
}

NSImageView* pictureOf(NSString* name, NSString* spokenLabel) {
    NSImageView* picture = [[[NSImageView alloc] init] autorelease];
    [picture setImage:[NSImage imageNamed:name]];
    [picture setAccessibilityLabel:spokenLabel];
    return picture;
}

NSBox* verticalLine() {
    NSBox* line = [[[NSBox alloc] init] autorelease];
    [line setBoxType:NSBoxSeparator];
    return line;
}

}  // namespace

@implementation StepsSidebar

- (NSInteger)currentStep {
    return _currentStep;
}

- (void)setCurrentStep:(NSInteger)step {
    _currentStep = step;
    [self setSubviews:@[]];
    [self addParts];
    [self setNeedsDisplay:YES];
}

- (void)viewDidMoveToWindow {
    [super viewDidMoveToWindow];
    [self addParts];
}

/// A page that is never shown needs none of them.
- (void)addParts {
    if (![self window] || _currentStep == 0 || [[self subviews] count] > 0) {
        return;
    }
    [self addProduct];
    [self add:verticalLine() frame:NSMakeRect(200, 0, 1, 480)];
    for (NSUInteger index = 0; index < [stepNames() count]; ++index) {
        [self addStep:NSInteger(index) + 1 name:[stepNames() objectAtIndex:index]];
    }
}

- (void)add:(NSView*)view frame:(NSRect)frame {
    [view setFrame:frame];
    [self addSubview:view];
}

- (void)addProduct {
    NSFont* large = [NSFont boldSystemFontOfSize:17];
    NSFont* small = [NSFont systemFontOfSize:12];
    [self add:pictureOf(@"InstallerIcon", @"Morvella") frame:NSMakeRect(52, 366, 96, 96)];
    [self add:centeredLabelOf(@"Morvella", large, [NSColor labelColor])
        frame:NSMakeRect(12, 340, 176, 24)];
    [self add:centeredLabelOf(@"Installer", small, [NSColor secondaryLabelColor])
        frame:NSMakeRect(12, 322, 176, 18)];
}

- (void)addStep:(NSInteger)step name:(NSString*)name {
    NSFont* font = [NSFont systemFontOfSize:13];
    if (step < _currentStep) {
        const NSRect area = areaOfStep(step);
        [self add:pictureOf(@"NSMenuOnStateTemplate", @"Done")
            frame:NSMakeRect(25, NSMinY(area) + 7, 16, 16)];
        [self addName:name font:font color:[NSColor labelColor] state:@"done" step:step];
    } else if (step == _currentStep) {
        NSFont* bold = [NSFont boldSystemFontOfSize:13];
        NSColor* color = [NSColor alternateSelectedControlTextColor];
        [self addNumberOfStep:step font:bold color:color];
        [self addName:name font:bold color:color state:@"current step" step:step];
    } else {
        NSColor* color = [NSColor secondaryLabelColor];
        [self addNumberOfStep:step font:font color:color];
        [self addName:name font:font color:color state:@"not reached yet" step:step];
    }
}

- (void)addNumberOfStep:(NSInteger)step font:(NSFont*)font color:(NSColor*)color {
    [self add:centeredLabelOf([@(step) stringValue], font, color)
        frame:NSMakeRect(22, NSMinY(areaOfStep(step)) + 6, 22, 18)];
}

- (void)addName:(NSString*)name
           font:(NSFont*)font
          color:(NSColor*)color
          state:(NSString*)state
           step:(NSInteger)step {
    NSTextField* label = labelOf(name, font, color);
    [label setAccessibilityLabel:[NSString stringWithFormat:@"%@, %@", name, state]];
    [self add:label frame:NSMakeRect(50, NSMinY(areaOfStep(step)) + 6, 130, 18)];
}

- (BOOL)isOpaque {
    return YES;
}

- (void)drawRect:(NSRect)dirtyRect {
    [[NSColor controlBackgroundColor] set];
    NSRectFill([self bounds]);
    // Deprecated for a name that macOS 10.13 does not know.
    [[NSColor alternateSelectedControlColor] set];
    [[NSBezierPath bezierPathWithRoundedRect:areaOfStep(_currentStep) xRadius:6 yRadius:6] fill];
}

@end
