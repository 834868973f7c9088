#include <sys/stat.h>
#include <cerrno>

#include "posix_error.h"

@implementation NSURL (Complement)

/// GNUstep's own wants the item to be readable. What cannot be read is there all the same, and so
/// is a symbolic link that leads nowhere.
- (BOOL)checkResourceIsReachableAndReturnError:(NSError**)error {
    struct stat status;
    if (lstat([[self path] UTF8String], &status) == 0) {
        return YES;
    }
    return failed(error, errno, [NSString stringWithFormat:@"“%@” is not reachable", [self path]]);
}

@end
