#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#import <Foundation/Foundation.h>

/// GNUstep reads a file by a method of another name only, which writes to the log when it fails and
/// waits at a pipe for ever. The reason of a failure is not told.
@implementation NSData (Complement)

+ (instancetype)dataWithContentsOfFile:(NSString*)path
                               options:(NSDataReadingOptions)options
                                 error:(NSError**)error {
    constexpr size_t largePage = 1 << 21;
    const int file = open([path UTF8String], O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat status;
    const bool isFile = file >= 0 && fstat(file, &status) == 0 && S_ISREG(status.st_mode);
    const size_t size = isFile ? status.st_size : 0;
    // Making small pages for a large file takes longer than reading it.
    void* bytes = std::aligned_alloc(largePage, (size / largePage + 1) * largePage);
    madvise(bytes, size, MADV_HUGEPAGE);
    const ssize_t length = isFile ? read(file, bytes, size) : -1;
    close(file);
    NSData* data = [NSData dataWithBytesNoCopy:bytes
                                        length:std::max<ssize_t>(length, 0)
                                  freeWhenDone:YES];
    return length < 0 ? nil : data;
}

@end
