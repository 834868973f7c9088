#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstdlib>

#include "posix_error.h"

namespace {

/// What an open regular file holds; nil with the reason in `errno`.
NSData* readData(int file) {
    struct stat status;
    if (fstat(file, &status) != 0) {
        return nil;
    }
    if (!S_ISREG(status.st_mode)) {
        errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
        return nil;
    }
    const auto size = static_cast<size_t>(status.st_size);
    auto* bytes = static_cast<char*>(std::malloc(size + 1));
    size_t length = 0;
    for (ssize_t count = 1; bytes && count > 0 && length < size; length += count) {
        count = read(file, bytes + length, size - length);
        if (count < 0) {
            std::free(bytes);
            return nil;
        }
    }
    return bytes ? [NSData dataWithBytesNoCopy:bytes length:length freeWhenDone:YES] : nil;
}

}  // namespace

/// GNUstep reads a file by a method of another name only, which writes to the log when it fails and
/// waits at a pipe for ever.
@implementation NSData (Complement)

+ (instancetype)dataWithContentsOfFile:(NSString*)path
                               options:(NSDataReadingOptions)options
                                 error:(NSError**)error {
    const int file = open([path UTF8String], O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    NSData* data = file < 0 ? nil : readData(file);
    if (!data) {
        failed(error, errno, [NSString stringWithFormat:@"“%@” could not be read", path]);
    }
    if (file >= 0) {
        close(file);
    }
    return data;
}

@end
