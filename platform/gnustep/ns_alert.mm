#import "sheet_cover.h"

@interface CompletedAlert : NSAlert {
    BOOL _showsSuppressionButton;
    NSButton* _suppressionButton;
    NSView* _accessoryView;
}
@property(nonatomic) BOOL showsSuppressionButton;
@property(nonatomic, readonly) NSButton* suppressionButton;
@property(nonatomic, retain) NSView* accessoryView;
@end

@implementation NSAlert (CompletedAllocation)

/// A category cannot add instance variables.
+ (instancetype)allocWithZone:(NSZone*)zone {
    return self == [NSAlert class] ? [CompletedAlert allocWithZone:zone]
                                   : [super allocWithZone:zone];
}

@end

@implementation CompletedAlert

@synthesize showsSuppressionButton = _showsSuppressionButton;
@synthesize suppressionButton = _suppressionButton;
@synthesize accessoryView = _accessoryView;

- (instancetype)init {
    self = [super init];
    if (self) {
        _suppressionButton = [[NSButton alloc] init];
        [_suppressionButton setButtonType:NSSwitchButton];
    }
    return self;
}

- (void)dealloc {
    [_suppressionButton release];
    [_accessoryView release];
    [super dealloc];
}

- (void)beginSheetModalForWindow:(NSWindow*)window
               completionHandler:(AlertCompletionHandler)handler {
    if ([[self buttons] count] == 0) {
        [self addButtonWithTitle:@"OK"];
    }
    [SheetCover beginSheet:self onWindow:window completionHandler:handler];
}

@end
