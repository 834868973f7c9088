#include <unistd.h>

@implementation NSProcessInfo (Complement)

/// GNUstep's own is what the process began with. Children are started with this.
- (NSDictionary*)environment {
    NSMutableDictionary* environment = [NSMutableDictionary dictionary];
    for (char** entry = environ; entry && *entry; ++entry) {
        NSString* text = [NSString stringWithUTF8String:*entry];
        const NSRange equals = [text rangeOfString:@"="];
        if (equals.location != NSNotFound) {
            [environment setObject:[text substringFromIndex:NSMaxRange(equals)]
                            forKey:[text substringToIndex:equals.location]];
        }
    }
    return environment;
}

@end
