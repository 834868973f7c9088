#import "sheet_cover.h"

@implementation NSWindow (Complement)

/// Not a window: use the result only to tell whether there is a sheet.
- (NSWindow*)attachedSheet {
    return (id)[SheetCover coverOfWindow:self];
}

+ (void)setAllowsAutomaticWindowTabbing:(BOOL)allows {
}

- (void)setPreventsApplicationTerminationWhenModal:(BOOL)prevents {
}

@end
