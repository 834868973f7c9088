#import <AppKit/AppKit.h>
#include <dispatch/dispatch.h>

#import "kept_block.h"

struct MorvellaDispatchQueue {};

dispatch_queue_t dispatch_get_main_queue() {
    static MorvellaDispatchQueue mainQueue;
    return &mainQueue;
}

void dispatch_async(dispatch_queue_t /*queue*/, dispatch_block_t block) {
    // Without a main run loop, GNUstep would run the block at once.
    [NSRunLoop mainRunLoop];
    NSArray* modes = @[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ];
    // A pool of its own: the caller's would keep the block after it has run.
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    [[KeptBlock keeping:block] performSelectorOnMainThread:@selector(call)
                                                withObject:nil
                                             waitUntilDone:NO
                                                     modes:modes];
    [pool release];
}
