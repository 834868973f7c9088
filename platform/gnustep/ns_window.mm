#import "sheet_cover.h"

@implementation NSWindow (Complement)

/// No window, but it tells whether there is a sheet.
- (NSWindow*)attachedSheet {
    return (id)[SheetCover coverOfWindow:self];
}

+ (void)setAllowsAutomaticWindowTabbing:(BOOL)allows {
}

- (void)setPreventsApplicationTerminationWhenModal:(BOOL)prevents {
}

@end
