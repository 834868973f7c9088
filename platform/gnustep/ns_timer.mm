#include <Block.h>

/// A block is not an object here, so a timer cannot keep it as one: it keeps this instead.
@interface TimerTick : NSObject {
    GSTimerBlock _block;
}
- (instancetype)initWithBlock:(GSTimerBlock)block;
- (void)fire:(NSTimer*)timer;
@end

@implementation TimerTick

- (instancetype)initWithBlock:(GSTimerBlock)block {
    self = [super init];
    if (self) {
        _block = Block_copy(block);
    }
    return self;
}

- (void)dealloc {
    Block_release(_block);
    [super dealloc];
}

- (void)fire:(NSTimer*)timer {
    _block(timer);
}

@end

/// GNUstep has the method, but its own sends messages to the block.
@implementation NSTimer (Complement)

+ (NSTimer*)timerWithTimeInterval:(NSTimeInterval)interval
                          repeats:(BOOL)repeats
                            block:(GSTimerBlock)block {
    TimerTick* tick = [[[TimerTick alloc] initWithBlock:block] autorelease];
    return [NSTimer timerWithTimeInterval:interval
                                   target:tick
                                 selector:@selector(fire:)
                                 userInfo:nil
                                  repeats:repeats];
}

@end
