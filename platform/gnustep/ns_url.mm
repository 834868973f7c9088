#include <sys/stat.h>

#include <cerrno>

#import <Foundation/Foundation.h>

@implementation NSURL (Complement)

/// Whether the item exists, even if it is unreadable or a broken link: GNUstep's own wants to read
/// it.
- (BOOL)checkResourceIsReachableAndReturnError:(NSError**)error {
    struct stat status;
    const BOOL exists = lstat([[self path] UTF8String], &status) == 0;
    if (!exists && error) {
        *error = [NSError errorWithDomain:NSPOSIXErrorDomain code:errno userInfo:nil];
    }
    return exists;
}

@end
