#import <GNUstepGUI/GSWindowDecorationView.h>

#import "sheet_cover.h"

/// A window puts its new content view on top of everything that it shows.
@implementation GSWindowDecorationView (Complement)

- (void)didAddSubview:(NSView*)subview {
    [super didAddSubview:subview];
    if ([subview isKindOfClass:[SheetCover class]]) {
        return;
    }
    for (NSView* view in [self subviews]) {
        if (view == subview) {
            return;
        }
        if ([view isKindOfClass:[SheetCover class]]) {
            [self addSubview:subview positioned:NSWindowBelow relativeTo:view];
            return;
        }
    }
}

@end
