#import <AppKit/AppKit.h>

@implementation NSView (Complement)

- (void)setAccessibilityElement:(BOOL)element {
}

- (void)setAccessibilityLabel:(NSString*)label {
}

/// Redrawing begins at this view: the window's own, so that a sheet over a view is redrawn with it.
- (NSView*)opaqueAncestor {
    return [[[self window] contentView] superview];
}

@end
