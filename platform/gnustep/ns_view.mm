#import <AppKit/AppKit.h>

@implementation NSView (Complement)

- (void)setAccessibilityElement:(BOOL)element {
}

- (void)setAccessibilityLabel:(NSString*)label {
}

/// A view that draws itself again is drawn from this one on: the window's own, so that what covers
/// it is drawn again, too.
- (NSView*)opaqueAncestor {
    return [[[self window] contentView] superview];
}

@end
