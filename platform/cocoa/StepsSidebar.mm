#import "platform/cocoa/StepsSidebar.h"

#include "platform/cocoa/conversions.h"

using morvella::Step;
using morvella::StepState;
using morvella::stringOf;

namespace {

/// The area of a row; it is filled behind the current step.
NSRect areaOfRow(NSUInteger row) {
    return NSMakeRect(12, 262 - 36 * CGFloat(row), 176, 30);
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

NSImageView* checkMark() {
    NSImageView* picture = [[[NSImageView alloc] init] autorelease];
    [picture setImage:[NSImage imageNamed:@"NSMenuOnStateTemplate"]];
    return picture;
}

NSColor* colorOf(StepState state) {
    switch (state) {
        case StepState::done:
            return [NSColor labelColor];
        case StepState::current:
            return [NSColor alternateSelectedControlTextColor];
        case StepState::toCome:
            break;
    }
    return [NSColor secondaryLabelColor];
}

}  // namespace

@implementation StepsSidebar

- (void)dealloc {
    [_rows release];
    [super dealloc];
}

- (void)setSteps:(const std::vector<Step>&)steps {
    [_rows makeObjectsPerformSelector:@selector(removeFromSuperview)];
    [_rows release];
    _rows = [[NSMutableArray alloc] init];
    for (NSUInteger row = 0; row < steps.size(); ++row) {
        [self addStep:steps[row] inRow:row];
    }
    [self setNeedsDisplay:YES];
}

- (void)addStep:(const Step&)step inRow:(NSUInteger)row {
    const NSRect area = areaOfRow(row);
    const BOOL isCurrent = step.state == StepState::current;
    NSFont* font = isCurrent ? [NSFont boldSystemFontOfSize:13] : [NSFont systemFontOfSize:13];
    NSColor* color = colorOf(step.state);
    if (isCurrent) {
        _currentArea = area;
    }
    if (step.state == StepState::done) {
        [self addMark:checkMark() frame:NSMakeRect(25, NSMinY(area) + 7, 16, 16)];
    } else {
        NSTextField* number = labelOf([@(row + 1) stringValue], font, color);
        [number setAlignment:NSTextAlignmentCenter];
        [self addMark:number frame:NSMakeRect(22, NSMinY(area) + 6, 22, 18)];
    }
    NSTextField* name = labelOf(stringOf(step.name), font, color);
    [name setAccessibilityLabel:stringOf(step.spokenLabel)];
    [self addToRow:name frame:NSMakeRect(50, NSMinY(area) + 6, 130, 18)];
}

/// Hidden from VoiceOver: the name's spoken label includes the state. VoiceOver may see the
/// control's cell, so that is hidden, too.
- (void)addMark:(NSControl*)mark frame:(NSRect)frame {
    [mark setAccessibilityElement:NO];
    [[mark cell] setAccessibilityElement:NO];
    [self addToRow:mark frame:frame];
}

- (void)addToRow:(NSView*)view frame:(NSRect)frame {
    [view setFrame:frame];
    [self addSubview:view];
    [_rows addObject:view];
}

- (BOOL)isOpaque {
    return YES;
}

- (void)drawRect:(NSRect)dirtyRect {
    [[NSColor controlBackgroundColor] set];
    [NSBezierPath fillRect:[self bounds]];
    // Deprecated in favour of a name that macOS 10.13 does not have.
    [[NSColor alternateSelectedControlColor] set];
    [[NSBezierPath bezierPathWithRoundedRect:_currentArea xRadius:6 yRadius:6] fill];
}

@end
