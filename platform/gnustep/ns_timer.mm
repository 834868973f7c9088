#import "kept_block.h"

/// GNUstep's version sends messages to the block, which is not an object here.
@implementation NSTimer (Complement)

+ (NSTimer*)timerWithTimeInterval:(NSTimeInterval)interval
                          repeats:(BOOL)repeats
                            block:(GSTimerBlock)block {
    return [NSTimer timerWithTimeInterval:interval
                                   target:[KeptBlock keeping:block]
                                 selector:@selector(callWith:)
                                 userInfo:nil
                                  repeats:repeats];
}

@end
