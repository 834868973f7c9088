#include "platform/cocoa/guard.h"

#import <AppKit/AppKit.h>

#include "platform/cocoa/log.h"

namespace morvella {

namespace {

struct UnknownStateHandler {
    const void* owner = nullptr;
    std::function<void()> call;
};

UnknownStateHandler& unknownStateHandler() {
    static UnknownStateHandler handler;
    return handler;
}

void log(NSException* exception) {
    writeLogLine([NSString stringWithFormat:@"%@: %@", [exception name], [exception reason]]);
}

}  // namespace

void guarded(const std::function<void()>& work) {
    @try {
        work();
    } @catch (NSException* exception) {
        log(exception);
        if (unknownStateHandler().call) {
            runOrTerminate(unknownStateHandler().call);
        } else {
            [NSApp terminate:nil];
        }
    }
}

void runOrTerminate(const std::function<void()>& work) {
    @try {
        work();
    } @catch (NSException* exception) {
        log(exception);
        [NSApp terminate:nil];
    }
}

void setUnknownStateHandler(const void* owner, std::function<void()> handler) {
    unknownStateHandler() = {.owner = owner, .call = std::move(handler)};
}

void clearUnknownStateHandler(const void* owner) {
    if (unknownStateHandler().owner == owner) {
        unknownStateHandler() = {};
    }
}

}  // namespace morvella
