#include <Block.h>

/// Carries a block to the main thread's run loop.
@interface DispatchedBlock : NSObject {
    dispatch_block_t _block;
}
- (instancetype)initWithBlock:(dispatch_block_t)block;
- (void)run;
@end

@implementation DispatchedBlock

- (instancetype)initWithBlock:(dispatch_block_t)block {
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

- (void)run {
    _block();
}

@end

struct MorvellaDispatchQueue {};

dispatch_queue_t dispatch_get_main_queue() {
    static MorvellaDispatchQueue mainQueue;
    return &mainQueue;
}

void dispatch_async(dispatch_queue_t /*queue*/, dispatch_block_t block) {
    // As long as there is none, GNUstep would run the block at once.
    [NSRunLoop mainRunLoop];
    DispatchedBlock* dispatched = [[DispatchedBlock alloc] initWithBlock:block];
    [dispatched performSelectorOnMainThread:@selector(run)
                                 withObject:nil
                              waitUntilDone:NO
                                      modes:@[
                                          NSDefaultRunLoopMode, NSModalPanelRunLoopMode,
                                          NSEventTrackingRunLoopMode
                                      ]];
    [dispatched release];
}
