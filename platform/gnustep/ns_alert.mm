#import "ns_alert.h"

#import "sheet_cover.h"

@implementation NSAlert (CompletedAllocation)

/// An alert has no room for what GNUstep's lacks, so a subclass adds it.
+ (instancetype)allocWithZone:(NSZone*)zone {
    return self == [NSAlert class] ? [CompletedAlert allocWithZone:zone]
                                   : [super allocWithZone:zone];
}

@end

@implementation CompletedAlert

- (void)dealloc {
    [_suppressionButton release];
    [_accessoryView release];
    [super dealloc];
}

- (BOOL)showsSuppressionButton {
    return _showsSuppressionButton;
}

- (void)setShowsSuppressionButton:(BOOL)shows {
    _showsSuppressionButton = shows;
}

- (NSButton*)suppressionButton {
    if (!_suppressionButton) {
        _suppressionButton = [[NSButton alloc] initWithFrame:NSZeroRect];
        [_suppressionButton setButtonType:NSSwitchButton];
        [_suppressionButton setTitle:@"Do not show this message again"];
    }
    return _suppressionButton;
}

- (NSView*)accessoryView {
    return _accessoryView;
}

- (void)setAccessoryView:(NSView*)view {
    [view retain];
    [_accessoryView release];
    _accessoryView = view;
}

- (void)beginSheetModalForWindow:(NSWindow*)window
               completionHandler:(AlertCompletionHandler)handler {
    if ([[self buttons] count] == 0) {
        [self addButtonWithTitle:@"OK"];
    }
    [SheetCover beginSheet:self onWindow:window completionHandler:handler];
}

@end
