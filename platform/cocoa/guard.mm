#include "platform/cocoa/guard.h"

#import <AppKit/AppKit.h>

namespace morvella {

namespace {

std::function<void()>& unknownStateHandler() {
    static std::function<void()> handler;
    return handler;
}

void log(NSException* exception) {
    NSLog(@"%@: %@", [exception name], [exception reason]);
}

void tellOfUnknownState() {
    if (!unknownStateHandler()) {
        [NSApp terminate:nil];
        return;
    }
    @try {
        unknownStateHandler()();
    } @catch (NSException* exception) {
        log(exception);
        [NSApp terminate:nil];
    }
}

}  // namespace

void guarded(const std::function<void()>& work) {
    @try {
        work();
    } @catch (NSException* exception) {
        log(exception);
        tellOfUnknownState();
    }
}

void setUnknownStateHandler(std::function<void()> handler) {
    unknownStateHandler() = std::move(handler);
}

}  // namespace morvella
