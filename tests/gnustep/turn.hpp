#pragma once

#import <Foundation/Foundation.h>

#include <functional>

namespace morvella::gnustep_tests {

/// Lets the main run loop turn in `mode` until `done`, at the longest for ten seconds.
inline bool turnUntil(NSString* mode, const std::function<bool()>& done) {
    NSDate* deadline = [NSDate dateWithTimeIntervalSinceNow:10];
    NSTimer* keepsTurning = [NSTimer timerWithTimeInterval:0.01
                                                    target:[NSObject class]
                                                  selector:@selector(class)
                                                  userInfo:nil
                                                   repeats:YES];
    [[NSRunLoop mainRunLoop] addTimer:keepsTurning forMode:mode];
    while (!done() && [deadline timeIntervalSinceNow] > 0) {
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        [[NSRunLoop mainRunLoop] runMode:mode
                              beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.05]];
        [pool release];
    }
    [keepsTurning invalidate];
    return done();
}

}  // namespace morvella::gnustep_tests
