#include <glib.h>
#include <sys/stat.h>

#include <cerrno>

#include "posix_error.h"

/// GNUstep reads a file by a method of another name only, which writes to the log when it fails and
/// waits at a pipe for ever.
@implementation NSData (Complement)

+ (instancetype)dataWithContentsOfFile:(NSString*)path
                               options:(NSDataReadingOptions)options
                                 error:(NSError**)error {
    struct stat status;
    char* bytes = nullptr;
    gsize length = 0;
    int code = 0;
    if (stat([path UTF8String], &status) != 0) {
        code = errno;
    } else if (!S_ISREG(status.st_mode)) {
        code = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
    } else if (!g_file_get_contents([path UTF8String], &bytes, &length, nullptr)) {
        code = EIO;
    }
    if (code != 0) {
        failed(error, code, [NSString stringWithFormat:@"“%@” could not be read", path]);
        return nil;
    }
    return [NSData dataWithBytesNoCopy:bytes length:length freeWhenDone:YES];
}

@end
