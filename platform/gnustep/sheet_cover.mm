#import "sheet_cover.h"

#include <Block.h>

#import "alert_box.h"
#import "ns_alert.h"

/// An alert that waits for its answer.
@interface AwaitedAlert : NSObject {
    CompletedAlert* _alert;
    AlertCompletionHandler _handler;
}
- (instancetype)initWithAlert:(CompletedAlert*)alert handler:(AlertCompletionHandler)handler;
- (CompletedAlert*)alert;
- (void)answer:(NSModalResponse)response;
@end

@implementation AwaitedAlert

- (instancetype)initWithAlert:(CompletedAlert*)alert handler:(AlertCompletionHandler)handler {
    self = [super init];
    if (self) {
        _alert = [alert retain];
        _handler = Block_copy(handler);
    }
    return self;
}

- (void)dealloc {
    Block_release(_handler);
    [_alert release];
    [super dealloc];
}

- (CompletedAlert*)alert {
    return _alert;
}

- (void)answer:(NSModalResponse)response {
    if (_handler) {
        _handler(response);
    }
}

@end

@implementation SheetCover

+ (SheetCover*)existingCoverOfWindow:(NSWindow*)window {
    for (NSView* view in [[[window contentView] superview] subviews]) {
        if ([view isKindOfClass:[SheetCover class]]) {
            return (SheetCover*)view;
        }
    }
    return nil;
}

+ (SheetCover*)coverOfWindow:(NSWindow*)window {
    SheetCover* cover = [self existingCoverOfWindow:window];
    if (!cover) {
        NSView* content = [window contentView];
        cover = [[[SheetCover alloc] initWithFrame:[content frame]] autorelease];
        [cover setAutoresizingMask:NSViewWidthSizable | NSViewHeightSizable];
        [[content superview] addSubview:cover];
    }
    return cover;
}

- (instancetype)initWithFrame:(NSRect)frame {
    self = [super initWithFrame:frame];
    if (self) {
        _waiting = [[NSMutableArray alloc] init];
    }
    return self;
}

- (void)dealloc {
    [_box release];
    [_waiting release];
    [super dealloc];
}

#pragma mark Alerts

- (void)beginSheet:(CompletedAlert*)alert completionHandler:(AlertCompletionHandler)handler {
    AwaitedAlert* awaited = [[AwaitedAlert alloc] initWithAlert:alert handler:handler];
    [_waiting insertObject:awaited atIndex:[self placeOfAlert:alert]];
    [awaited release];
    if (!_box && !_answering) {
        [self showFirst];
    }
}

/// The alert that is shown is the first of the waiting ones, too.
- (NSUInteger)placeOfAlert:(NSAlert*)alert {
    NSUInteger place = [_waiting count];
    const NSUInteger first = _box ? 1 : 0;
    while ([alert alertStyle] == NSCriticalAlertStyle && place > first &&
           [[[_waiting objectAtIndex:place - 1] alert] alertStyle] != NSCriticalAlertStyle) {
        --place;
    }
    return place;
}

- (void)showFirst {
    CompletedAlert* alert = [[_waiting objectAtIndex:0] alert];
    _box = [[AlertBox alloc] initWithAlert:alert width:[self bounds].size.width];
    [_box setTarget:self action:@selector(answered:)];
    const NSSize size = [_box frame].size;
    const NSSize room = [self bounds].size;
    [_box setFrameOrigin:NSMakePoint(floor((room.width - size.width) / 2),
                                     floor((room.height - size.height) / 2))];
    [_box setAutoresizingMask:NSViewMinXMargin | NSViewMaxXMargin | NSViewMinYMargin |
                              NSViewMaxYMargin];
    [self addSubview:_box];
    [self showNow];
}

/// The work of a page or of a completion handler may block the main thread right after this.
- (void)showNow {
    [[self window] display];
    [[self window] flushWindow];
}

- (void)answered:(NSButton*)button {
    AwaitedAlert* awaited = [[[_waiting objectAtIndex:0] retain] autorelease];
    [[self retain] autorelease];
    [_box removeFromSuperview];
    [_box autorelease];
    _box = nil;
    [_waiting removeObjectAtIndex:0];
    _answering = YES;
    [self setHidden:YES];
    [self showNow];
    [awaited answer:[button tag]];
    _answering = NO;
    if ([_waiting count] > 0) {
        [self setHidden:NO];
        [self showFirst];
    } else {
        [self removeFromSuperview];
    }
}

#pragma mark Events

- (BOOL)acceptsFirstMouse:(NSEvent*)event {
    return YES;
}

- (void)mouseDown:(NSEvent*)event {
}

- (void)rightMouseDown:(NSEvent*)event {
}

- (void)scrollWheel:(NSEvent*)event {
}

- (void)keyDown:(NSEvent*)event {
    [_box takeKey:event];
}

#pragma mark Drawing

- (void)drawRect:(NSRect)rect {
    [[NSColor colorWithCalibratedWhite:0 alpha:0.28] set];
    NSRectFillUsingOperation(rect, NSCompositeSourceOver);
}

@end
