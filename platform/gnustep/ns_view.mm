#import "sheet_cover.h"

@implementation NSView (Complement)

- (void)setAccessibilityElement:(BOOL)element {
}

- (void)setAccessibilityLabel:(NSString*)label {
}

/// A view that draws itself again is drawn from the nearest opaque view below it on. Under a cover
/// that must be the window's own view: it draws the cover again, too.
- (NSView*)opaqueAncestor {
    SheetCover* cover = [SheetCover coverOfWindow:[self window]];
    if (cover) {
        return [cover superview];
    }
    NSView* view = self;
    while (![view isOpaque] && [view superview]) {
        view = [view superview];
    }
    return view;
}

@end
