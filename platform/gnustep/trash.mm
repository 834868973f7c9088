#include <gio/gio.h>

#include "posix_error.h"

/// The Trash is the freedesktop one, through GIO: on the home's file system that is
/// `.local/share/Trash` in the home folder.
@implementation NSFileManager (Trash)

- (BOOL)trashItemAtURL:(NSURL*)url resultingItemURL:(NSURL**)resultingUrl error:(NSError**)error {
    if (resultingUrl) {
        *resultingUrl = nil;
    }
    GFile* file = g_file_new_for_path([[url path] UTF8String]);
    GError* reason = nullptr;
    const BOOL trashed = g_file_trash(file, nullptr, &reason);
    g_object_unref(file);
    if (reason) {
        if (error) {
            NSString* text = [NSString stringWithUTF8String:reason->message];
            *error = [NSError errorWithDomain:NSCocoaErrorDomain
                                         code:NSFileWriteUnknownError
                                     userInfo:@{NSLocalizedDescriptionKey : text}];
        }
        g_error_free(reason);
    }
    return trashed;
}

@end
