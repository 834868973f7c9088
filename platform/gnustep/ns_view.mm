#import <AppKit/AppKit.h>

@implementation NSView (Complement)

- (void)setAccessibilityElement:(BOOL)element {
}

- (void)setAccessibilityLabel:(NSString*)label {
}

/// Redrawing starts at the window's frame view, so that a sheet over a view is redrawn with it.
- (NSView*)opaqueAncestor {
    return [[[self window] contentView] superview];
}

@end
