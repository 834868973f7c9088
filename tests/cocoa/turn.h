#pragma once

#import <Foundation/Foundation.h>

#include <functional>

namespace morvella::cocoa_tests {

/// Runs the main run loop until `done` returns true; gives up and returns false after ten seconds.
inline bool turnUntil(const std::function<bool()>& done) {
    NSDate* deadline = [NSDate dateWithTimeIntervalSinceNow:10];
    bool isDone = done();
    while (!isDone && [deadline timeIntervalSinceNow] > 0) {
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        [[NSRunLoop mainRunLoop] runMode:NSDefaultRunLoopMode
                              beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.05]];
        [pool release];
        isDone = done();
    }
    return isDone;
}

}  // namespace morvella::cocoa_tests
