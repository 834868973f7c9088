#include "platform/cocoa/window.h"

#include <dispatch/dispatch.h>

#include "platform/cocoa/conversions.h"
#include "platform/cocoa/guard.h"

namespace morvella {

namespace {

// The values are passed to the platform unchanged.
static_assert(static_cast<int>(AlertStyle::warning) == NSAlertStyleWarning);
static_assert(static_cast<int>(AlertStyle::informational) == NSAlertStyleInformational);
static_assert(static_cast<int>(AlertStyle::critical) == NSAlertStyleCritical);
static_assert(alertFirstButtonReturn == NSAlertFirstButtonReturn);

NSAlert* makeAlert(const Alert& alert) {
    NSAlert* sheet = [[[NSAlert alloc] init] autorelease];
    [sheet setAlertStyle:static_cast<NSAlertStyle>(alert.style)];
    for (const std::string& title : alert.buttons) {
        [sheet addButtonWithTitle:stringOf(title)];
    }
    [sheet setShowsHelp:alert.showsHelp];
    if (alert.suppressionButton) {
        [sheet setShowsSuppressionButton:YES];
        [[sheet suppressionButton] setTitle:stringOf(alert.suppressionButton->title)];
        [[sheet suppressionButton] setState:static_cast<NSInteger>(alert.suppressionButton->state)];
    }
    if (alert.accessory) {
        [sheet setAccessoryView:objectOf(alert.accessory.get())];
    }
    [sheet setMessageText:stringOf(alert.messageText)];
    if (!alert.informativeText.empty()) {
        [sheet setInformativeText:stringOf(alert.informativeText)];
    }
    // By default a queued sheet would block termination.
    [[sheet window] setPreventsApplicationTerminationWhenModal:NO];
    return sheet;
}

}  // namespace

void requestAttention(bool critical) {
    if (![NSApp isActive]) {
        [NSApp requestUserAttention:critical ? NSCriticalRequest : NSInformationalRequest];
    }
}

void CocoaWindow::makeKeyAndOrderFront(const Object* sender) {
    [object() makeKeyAndOrderFront:objectOf(sender)];
}

void CocoaWindow::beginSheet(const Alert& alert, AlertAnswered answered) {
    const Retained<NSAlert*> sheet(makeAlert(alert));
    const auto answer = ^(NSModalResponse response) {
        const auto state = [[sheet.get() suppressionButton] state];
        guarded([&] {
            answered({.response = static_cast<int>(response),
                      .suppressionState = static_cast<ControlState>(state)});
        });
    };
    if (object()) {
        [sheet.get() beginSheetModalForWindow:object() completionHandler:answer];
    } else {
        dispatch_async(dispatch_get_main_queue(), ^{
            runOrTerminate([&] { answer([sheet.get() runModal]); });
        });
    }
    requestAttention(alert.style == AlertStyle::critical);
}

std::shared_ptr<Window> CocoaView::window() const {
    return std::make_shared<CocoaWindow>([object() window]);
}

}  // namespace morvella
