#include <glib.h>

#import <Foundation/Foundation.h>

/// GNUstep reads a file by a method of another name only, which writes to the log when it fails and
/// waits at a pipe for ever. The reason of a failure is not told.
@implementation NSData (Complement)

+ (instancetype)dataWithContentsOfFile:(NSString*)path
                               options:(NSDataReadingOptions)options
                                 error:(NSError**)error {
    char* bytes = nullptr;
    gsize length = 0;
    const bool isRead = g_file_test([path UTF8String], G_FILE_TEST_IS_REGULAR) &&
                        g_file_get_contents([path UTF8String], &bytes, &length, nullptr);
    return isRead ? [NSData dataWithBytesNoCopy:bytes length:length freeWhenDone:YES] : nil;
}

@end
