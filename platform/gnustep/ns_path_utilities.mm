#include <cstdlib>

#import <Foundation/Foundation.h>

/// GNUstep's version ignores HOME. This one also replaces it in GNUstep's libraries, because the
/// executable's symbols take precedence.
NSString* NSHomeDirectory() {
    const char* home = std::getenv("HOME");
    return home && *home ? [NSString stringWithUTF8String:home]
                         : NSHomeDirectoryForUser(NSUserName());
}
