#import "ns_event.h"

#import "kept_block.h"

namespace {

/// The last key pressed, and when it was released; negative until then.
struct LastKey {
    unsigned short code = 0;
    NSTimeInterval released = 0;
};

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

/// For a held key, the X server sends presses with no release in between, or with one at the same
/// time. GNUstep marks none of them as repeats. Programs may send events with the time 0.
- (void)markRepeat {
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
    [event markRepeat];
    for (NSArray* monitor in monitors()) {
        const NSEventMask mask = [[monitor objectAtIndex:0] unsignedLongLongValue];
        if (event && (mask & NSEventMaskFromType([event type]))) {
            event = reinterpret_cast<LocalEventHandler>([[monitor objectAtIndex:1] block])(event);
        }
    }
    return event;
}

@end
