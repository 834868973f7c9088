#import <GNUstepGUI/GSWindowDecorationView.h>

#import "sheet_cover.h"

/// A window puts its new content view on top of everything that it shows.
@implementation GSWindowDecorationView (Complement)

- (void)didAddSubview:(NSView*)subview {
    [super didAddSubview:subview];
    SheetCover* cover = [SheetCover existingCoverOfWindow:[self window]];
    if (cover && [[self subviews] lastObject] != cover) {
        [[cover retain] autorelease];
        [self addSubview:cover positioned:NSWindowAbove relativeTo:nil];
    }
}

@end
