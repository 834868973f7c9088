#import "sheet_cover.h"

@implementation NSWindow (Complement)

/// Not a window; only nil or not nil means anything.
- (NSWindow*)attachedSheet {
    return (id)[SheetCover coverOfWindow:self];
}

+ (void)setAllowsAutomaticWindowTabbing:(BOOL)allows {
}

- (void)setPreventsApplicationTerminationWhenModal:(BOOL)prevents {
}

@end
