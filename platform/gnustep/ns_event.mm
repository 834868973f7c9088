#import "ns_event.h"

#include <Block.h>

/// A block is not an object here, so a list cannot keep it as one: it keeps this instead.
@interface EventMonitor : NSObject {
    NSEventMask _mask;
    LocalEventHandler _handler;
}
- (instancetype)initWithMask:(NSEventMask)mask handler:(LocalEventHandler)handler;
- (NSEvent*)watched:(NSEvent*)event;
@end

@implementation EventMonitor

- (instancetype)initWithMask:(NSEventMask)mask handler:(LocalEventHandler)handler {
    self = [super init];
    if (self) {
        _mask = mask;
        _handler = Block_copy(handler);
    }
    return self;
}

- (void)dealloc {
    Block_release(_handler);
    [super dealloc];
}

/// The event, or what the handler puts in its place.
- (NSEvent*)watched:(NSEvent*)event {
    return _mask & NSEventMaskFromType([event type]) ? _handler(event) : event;
}

@end

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

NSMutableArray* monitors() {
    static NSMutableArray* monitors = [[NSMutableArray alloc] init];
    return monitors;
}

}  // namespace

@implementation NSEvent (Complement)

+ (id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(LocalEventHandler)handler {
    EventMonitor* monitor = [[[EventMonitor alloc] initWithMask:mask handler:handler] autorelease];
    [monitors() addObject:monitor];
    return monitor;
}

+ (void)removeMonitor:(id)monitor {
    [monitors() removeObjectIdenticalTo:monitor];
}

+ (NSEvent*)watched:(NSEvent*)event {
    event = withRepeatTold(event);
    for (EventMonitor* monitor in [[monitors() copy] autorelease]) {
        event = event ? [monitor watched:event] : nil;
    }
    return event;
}

@end
