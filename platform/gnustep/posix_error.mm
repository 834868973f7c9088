#include "posix_error.h"

#include <cstring>

BOOL failed(NSError** error, int code, NSString* what) {
    if (error) {
        NSString* description = [NSString stringWithFormat:@"%@: %s.", what, std::strerror(code)];
        *error = [NSError errorWithDomain:NSPOSIXErrorDomain
                                     code:code
                                 userInfo:@{NSLocalizedDescriptionKey : description}];
    }
    return NO;
}
