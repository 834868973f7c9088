#include <cstdlib>

#import <Foundation/Foundation.h>

/// GNUstep's own ignores HOME. This one replaces it in GNUstep's libraries too, because the
/// executable's symbols come first.
NSString* NSHomeDirectory() {
    const char* home = std::getenv("HOME");
    return home && *home ? [NSString stringWithUTF8String:home]
                         : NSHomeDirectoryForUser(NSUserName());
}
