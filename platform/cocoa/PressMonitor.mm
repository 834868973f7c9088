#import "platform/cocoa/PressMonitor.h"

#include <algorithm>
#include <array>

#include "app/press_filter.hpp"

namespace {

morvella::PressFilter& filter() {
    static morvella::PressFilter filter;
    return filter;
}

/// The clock of `-[NSEvent timestamp]`.
NSTimeInterval now() {
    return [[NSProcessInfo processInfo] systemUptime];
}

bool isInTitleBar(NSView* button) {
    constexpr std::array buttons = {NSWindowCloseButton, NSWindowMiniaturizeButton,
                                    NSWindowZoomButton};
    return std::ranges::any_of(buttons, [button](NSWindowButton kind) {
        return button == [[button window] standardWindowButton:kind];
    });
}

/// Searches the whole window: a sheet may be beside the view that holds the page. On newer systems,
/// a button may have subviews.
bool hitsButton(NSEvent* event) {
    NSView* frame = [[[event window] contentView] superview];
    NSView* hit = [frame hitTest:[event locationInWindow]];
    while (hit && ![hit isKindOfClass:[NSButton class]]) {
        hit = [hit superview];
    }
    return hit && !isInTitleBar(hit);
}

/// Return, Enter, Space and Escape press buttons; with Command they belong to the menu.
bool isButtonKey(NSEvent* event) {
    NSString* key = [event charactersIgnoringModifiers];
    return key && !([event modifierFlags] & NSEventModifierFlagCommand) &&
           [@[ @"\r", @"\x03", @" ", @"\x1b" ] containsObject:key];
}

bool isDiscarded(NSEvent* event) {
    const bool isKey = [event type] == NSEventTypeKeyDown;
    if (!(isKey ? isButtonKey(event) : hitsButton(event))) {
        return false;
    }
    // Remote control and macro tools send events without a timestamp.
    const NSTimeInterval time = [event timestamp] > 0 ? [event timestamp] : now();
    return !filter().counts(time, isKey && [event isARepeat]);
}

}  // namespace

@implementation PressMonitor

+ (void)start {
    [NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskLeftMouseDown | NSEventMaskKeyDown
                                          handler:^NSEvent*(NSEvent* event) {
                                              return isDiscarded(event) ? nil : event;
                                          }];
    // A sheet queued behind another one begins without a call from the installer.
    NSNotificationCenter* center = [NSNotificationCenter defaultCenter];
    for (NSString* name in
         @[ NSWindowWillBeginSheetNotification, NSWindowDidEndSheetNotification ]) {
        [center addObserver:self selector:@selector(sheetBeganOrEnded:) name:name object:nil];
    }
}

+ (void)sheetBeganOrEnded:(NSNotification*)notification {
    [self screenChanged];
}

+ (void)screenChanged {
    filter().shown(now());
}

@end
