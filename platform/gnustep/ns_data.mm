#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>

#include "posix_error.h"

/// Owns the mapped pages of a file.
@interface MappedData : NSData {
    void* _pages;
    NSUInteger _size;
}
@end

@implementation MappedData

/// All of NSData's initialisers end here, and each class does this one by itself.
- (instancetype)initWithBytesNoCopy:(void*)pages length:(NSUInteger)size freeWhenDone:(BOOL)free {
    _pages = pages;
    _size = size;
    return self;
}

- (void)dealloc {
    munmap(_pages, _size);
    [super dealloc];
}

- (const void*)bytes {
    return _pages;
}

- (NSUInteger)length {
    return _size;
}

@end

namespace {

/// The data of an open regular file; nil with the reason in `errno`.
NSData* mappedData(int file) {
    struct stat status;
    if (fstat(file, &status) != 0) {
        return nil;
    }
    if (!S_ISREG(status.st_mode)) {
        errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
        return nil;
    }
    const auto size = static_cast<NSUInteger>(status.st_size);
    if (size == 0) {
        return [NSData data];
    }
    void* pages = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    if (pages == MAP_FAILED) {
        return nil;
    }
    return [[[MappedData alloc] initWithBytesNoCopy:pages length:size
                                       freeWhenDone:YES] autorelease];
}

}  // namespace

/// GNUstep maps a file by a method of another name only, which writes to the log when it fails.
@implementation NSData (Complement)

+ (instancetype)dataWithContentsOfFile:(NSString*)path
                               options:(NSDataReadingOptions)options
                                 error:(NSError**)error {
    const int file = open([path UTF8String], O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    NSData* data = file < 0 ? nil : mappedData(file);
    if (!data) {
        failed(error, errno, [NSString stringWithFormat:@"“%@” could not be read", path]);
    }
    if (file >= 0) {
        close(file);
    }
    if (data && !(options & NSDataReadingMappedIfSafe)) {
        return [NSData dataWithBytes:[data bytes] length:[data length]];
    }
    return data;
}

@end
