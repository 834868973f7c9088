#import "ns_event.h"

#import "kept_block.h"

namespace {

/// The key that went down last, and when it came up again; a negative time until then.
struct LastKey {
    unsigned short code = 0;
    NSTimeInterval released = 0;
};

/// The X server repeats a held key by presses without a release in between, or with one at the same
/// time. GNUstep calls none of them a repeat.
NSEvent* withRepeatTold(NSEvent* event) {
    static LastKey last;
    if ([event type] == NSKeyUp && [event keyCode] == last.code) {
        last.released = [event timestamp];
    }
    if ([event type] != NSKeyDown) {
        return event;
    }
    const bool repeats =
        [event keyCode] == last.code && (last.released < 0 || last.released == [event timestamp]);
    last = {.code = [event keyCode], .released = -1};
    return !repeats ? event
                    : [NSEvent keyEventWithType:NSKeyDown
                                             location:[event locationInWindow]
                                        modifierFlags:[event modifierFlags]
                                            timestamp:[event timestamp]
                                         windowNumber:[event windowNumber]
                                              context:[event context]
                                           characters:[event characters]
                          charactersIgnoringModifiers:[event charactersIgnoringModifiers]
                                            isARepeat:YES
                                              keyCode:[event keyCode]];
}

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

+ (NSEvent*)watched:(NSEvent*)event {
    event = withRepeatTold(event);
    for (NSArray* monitor in [[monitors() copy] autorelease]) {
        const NSEventMask mask = [[monitor objectAtIndex:0] unsignedLongLongValue];
        if (event && (mask & NSEventMaskFromType([event type]))) {
            event = reinterpret_cast<LocalEventHandler>([[monitor objectAtIndex:1] block])(event);
        }
    }
    return event;
}

@end
