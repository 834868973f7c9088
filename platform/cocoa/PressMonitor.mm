#import "platform/cocoa/PressMonitor.h"

#include <algorithm>
#include <array>

#include "app/press_filter.hpp"

using morvella::Press;
using morvella::PressFilter;

namespace {

PressFilter& filter() {
    static PressFilter filter;
    return filter;
}

/// The buttons of the title bar are no part of a page.
bool isOfTitleBar(NSView* view) {
    constexpr std::array buttons = {NSWindowCloseButton, NSWindowMiniaturizeButton,
                                    NSWindowZoomButton};
    return std::ranges::any_of(buttons, [view](NSWindowButton button) {
        return view == [[view window] standardWindowButton:button];
    });
}

/// Looks at the whole window: a sheet may lie beside the view that holds the page.
bool hitsButton(NSEvent* event) {
    NSView* whole = [[[event window] contentView] superview];
    NSView* hit = [whole hitTest:[event locationInWindow]];
    return [hit isKindOfClass:[NSButton class]] && !isOfTitleBar(hit);
}

/// Return, Enter, Space and Escape press buttons.
bool isKeyOfButtons(NSEvent* event) {
    NSString* key = [event charactersIgnoringModifiers];
    return key && !([event modifierFlags] & NSEventModifierFlagCommand) &&
           [@[ @"\r", @"\x03", @" ", @"\x1b" ] containsObject:key];
}

bool isHeldBack(NSEvent* event) {
    Press press;
    press.time = [event timestamp];
    press.doubleClickInterval = [NSEvent doubleClickInterval];
    if ([event type] == NSEventTypeLeftMouseDown) {
        press.clickCount = static_cast<int>([event clickCount]);
        return hitsButton(event) && !filter().counts(press);
    }
    if (!isKeyOfButtons(event)) {
        return false;
    }
    press.key = [[event charactersIgnoringModifiers] characterAtIndex:0];
    press.isRepeat = [event isARepeat];
    return !filter().counts(press);
}

}  // namespace

@implementation PressMonitor

+ (void)start {
    [NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskLeftMouseDown | NSEventMaskKeyDown
                                          handler:^NSEvent*(NSEvent* event) {
                                              return isHeldBack(event) ? nil : event;
                                          }];
    // A sheet may have to wait for another one, and comes by itself then.
    NSNotificationCenter* center = [NSNotificationCenter defaultCenter];
    for (NSString* name in
         @[ NSWindowWillBeginSheetNotification, NSWindowDidEndSheetNotification ]) {
        [center addObserver:self selector:@selector(sheetCameOrWent:) name:name object:nil];
    }
}

+ (void)sheetCameOrWent:(NSNotification*)notification {
    [self screenChanged];
}

+ (void)screenChanged {
    filter().shown([[NSProcessInfo processInfo] systemUptime]);
}

@end
