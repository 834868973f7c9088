#import <Foundation/Foundation.h>

#include <glib.h>

#include <chrono>
#include <cstdint>

@implementation NSProcessInfo (Complement)

/// GNUstep's version is a snapshot from process start, without the variables set since.
- (NSDictionary*)environment {
    NSMutableDictionary* environment = [NSMutableDictionary dictionary];
    char** names = g_listenv();
    for (char** name = names; *name; ++name) {
        [environment setObject:@(g_getenv(*name)) forKey:@(*name)];
    }
    g_strfreev(names);
    return environment;
}

/// The X server's event times: milliseconds of the same clock, modulo 2^32.
- (NSTimeInterval)systemUptime {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
    return static_cast<uint32_t>(time) / 1000.0;
}

@end
