#import <Foundation/Foundation.h>
#include <glib.h>

/// GNUstep's methods log their failures and block on a pipe forever. These do not report the reason
/// for a failure.
@implementation NSData (Complement)

+ (instancetype)dataWithContentsOfFile:(NSString*)path
                               options:(NSDataReadingOptions)options
                                 error:(NSError**)error {
    const char* name = [path UTF8String];
    char* bytes = nullptr;
    size_t length = 0;
    if (!g_file_test(name, G_FILE_TEST_IS_REGULAR) ||
        !g_file_get_contents(name, &bytes, &length, nullptr)) {
        return nil;
    }
    return [NSData dataWithBytesNoCopy:bytes length:length freeWhenDone:YES];
}

@end
