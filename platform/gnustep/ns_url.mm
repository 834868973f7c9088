#include <sys/stat.h>

#include <cerrno>

#import <Foundation/Foundation.h>

@implementation NSURL (Complement)

/// Also true for an unreadable item or a broken link, unlike GNUstep's version.
- (BOOL)checkResourceIsReachableAndReturnError:(NSError**)error {
    struct stat status;
    const BOOL exists = lstat([[self path] UTF8String], &status) == 0;
    if (!exists && error) {
        *error = [NSError errorWithDomain:NSPOSIXErrorDomain code:errno userInfo:nil];
    }
    return exists;
}

@end
