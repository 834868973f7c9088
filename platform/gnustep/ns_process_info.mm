#import <Foundation/Foundation.h>

#include <unistd.h>
#include <chrono>
#include <cstdint>

@implementation NSProcessInfo (Complement)

/// GNUstep's own is what the process began with, and GNUstep finds its configuration by this.
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

/// The X server counts the milliseconds of the same clock, and begins anew when 32 bits are full.
- (NSTimeInterval)systemUptime {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
    return static_cast<uint32_t>(time) / 1000.0;
}

@end
