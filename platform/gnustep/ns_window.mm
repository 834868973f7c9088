#import <AppKit/AppKit.h>

@implementation NSWindow (Complement)

- (BOOL)preventsApplicationTerminationWhenModal {
    return NO;
}

- (void)setPreventsApplicationTerminationWhenModal:(BOOL)prevents {
}

@end
