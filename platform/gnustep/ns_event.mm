#import "ns_event.h"

#import "kept_block.h"

namespace {

/// The key that went down last, and when it came up again; a negative time until then.
struct LastKey {
    unsigned short code = 0;
    NSTimeInterval released = 0;
};

/// Of a mask and a handler each.
NSMutableArray* monitors() {
    static NSMutableArray* monitors = [[NSMutableArray alloc] init];
    return monitors;
}

}  // namespace

@implementation NSEvent (Complement)

+ (id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(LocalEventHandler)handler {
    NSArray* monitor = @[ @(mask), [KeptBlock keeping:handler] ];
    [monitors() addObject:monitor];
    return monitor;
}

+ (void)removeMonitor:(id)monitor {
    [monitors() removeObjectIdenticalTo:monitor];
}

/// The X server repeats a held key by presses without a release in between, or with one at the same
/// time. GNUstep calls none of them a repeat. Events that programs send may all have the time 0.
- (void)tellRepeat {
    static LastKey last;
    if ([self type] == NSKeyUp && [self keyCode] == last.code) {
        last.released = [self timestamp];
    }
    if ([self type] == NSKeyDown) {
        event_data.key.repeat =
            [self keyCode] == last.code &&
            (last.released < 0 || (last.released > 0 && last.released == [self timestamp]));
        last = {.code = [self keyCode], .released = -1};
    }
}

+ (NSEvent*)watched:(NSEvent*)event {
    [event tellRepeat];
    for (NSArray* monitor in [[monitors() copy] autorelease]) {
        const NSEventMask mask = [[monitor objectAtIndex:0] unsignedLongLongValue];
        if (event && (mask & NSEventMaskFromType([event type]))) {
            event = reinterpret_cast<LocalEventHandler>([[monitor objectAtIndex:1] block])(event);
        }
    }
    return event;
}

@end
