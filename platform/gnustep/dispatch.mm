#import <AppKit/AppKit.h>
#include <dispatch/dispatch.h>

#import "kept_block.h"

struct MorvellaDispatchQueue {};

dispatch_queue_t dispatch_get_main_queue() {
    static MorvellaDispatchQueue mainQueue;
    return &mainQueue;
}

void dispatch_async(dispatch_queue_t /*queue*/, dispatch_block_t block) {
    // As long as there is none, GNUstep would run the block at once.
    [NSRunLoop mainRunLoop];
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    [[KeptBlock keeping:block]
        performSelectorOnMainThread:@selector(call)
                         withObject:nil
                      waitUntilDone:NO
                              modes:@[
                                  NSDefaultRunLoopMode, NSModalPanelRunLoopMode,
                                  NSEventTrackingRunLoopMode
                              ]];
    [pool release];
}
