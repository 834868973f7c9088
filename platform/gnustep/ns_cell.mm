#import <AppKit/AppKit.h>

@implementation NSCell (Complement)

- (void)setAccessibilityElement:(BOOL)element {
}

@end
