#import <AppKit/AppKit.h>
#include <dispatch/dispatch.h>

#include "platform/cocoa/conversions.h"
#include "platform/cocoa/guard.h"
#include "platform/cocoa/handle.h"
#include "platform/cocoa/system.h"

#include <algorithm>

namespace morvella {

void CocoaApplication::terminate(const Object* sender) {
    [[NSApplication sharedApplication] terminate:objectOf(sender)];
}

std::shared_ptr<void> CocoaApplication::beginActivity(const std::string& reason) {
    const Retained<id> activity([[NSProcessInfo processInfo]
        beginActivityWithOptions:NSActivityUserInitiated
                          reason:stringOf(reason)]);
    return {nullptr, [activity](std::nullptr_t) {
                [[NSProcessInfo processInfo] endActivity:activity.get()];
            }};
}

void CocoaApplication::announce(const std::string& text) {
    // The focus moves at the same time, and VoiceOver would speak that over a lower priority.
    NSAccessibilityPostNotificationWithUserInfo(
        NSApp, NSAccessibilityAnnouncementRequestedNotification, @{
            NSAccessibilityAnnouncementKey : stringOf(text),
            NSAccessibilityPriorityKey : @(NSAccessibilityPriorityHigh)
        });
}

bool CocoaApplication::openFile(const std::string& path, const std::string& application) {
    // Deprecated since 10.15, but its replacement needs the application's bundle and completes
    // after the installer has quit.
    return [[NSWorkspace sharedWorkspace] openFile:pathOf(path)
                                   withApplication:pathOf(application)];
}

Clock::Time CocoaClock::now() const {
    return std::chrono::system_clock::now();
}

std::string CocoaClock::format(Time time, const std::string& dateFormat) const {
    const std::chrono::duration<double> seconds = time.time_since_epoch();
    NSDateFormatter* formatter = [[[NSDateFormatter alloc] init] autorelease];
    [formatter setDateFormat:stringOf(dateFormat)];
    return textOf(
        [formatter stringFromDate:[NSDate dateWithTimeIntervalSince1970:seconds.count()]]);
}

void CocoaRunLoop::dispatchAsync(std::function<void()> work) {
    dispatch_async(dispatch_get_main_queue(), ^{
        guarded(work);
    });
}

namespace {

class CocoaTimer : public Timer {
  public:
    explicit CocoaTimer(NSTimer* timer) : timer_(timer) {}
    void invalidate() override { [timer_ invalidate]; }

  private:
    NSTimer* timer_;
};

}  // namespace

void CocoaRunLoop::scheduleRepeatingTimer(double interval, std::function<void(Timer&)> tick) {
    NSTimer* timer = [NSTimer timerWithTimeInterval:interval
                                            repeats:YES
                                              block:^(NSTimer* fired) {
                                                  CocoaTimer current(fired);
                                                  guarded([&] { tick(current); });
                                              }];
    [[NSRunLoop mainRunLoop] addTimer:timer forMode:NSDefaultRunLoopMode];
}

std::optional<TaskResult> CocoaTaskRunner::run(const Command& command) {
    const auto holdsNul = [](const std::string& argument) {
        return argument.find('\0') != std::string::npos;
    };
    // An argument containing NUL would be truncated.
    if (std::any_of(command.arguments.begin(), command.arguments.end(), holdsNul)) {
        return std::nullopt;
    }
    NSPipe* pipe = [NSPipe pipe];
    NSTask* task = [[[NSTask alloc] init] autorelease];
    [task setLaunchPath:pathOf(command.launchPath)];
    [task setStandardOutput:pipe];
    [task setStandardError:pipe];
    [task setArguments:stringsOf(command.arguments)];
    if (command.currentDirectoryPath) {
        [task setCurrentDirectoryPath:pathOf(*command.currentDirectoryPath)];
    }
    NSFileHandle* output = [pipe fileHandleForReading];
    // `launch` and the two path setters are soft-deprecated, but GNUstep has no replacement.
    // `launch` raises an exception if the child cannot be started.
    @try {
        [task launch];
    } @catch (NSException* exception) {
        return std::nullopt;
    }
    [task waitUntilExit];
    NSData* bytes = [output readDataToEndOfFile];
    [output closeFile];
    return TaskResult{.terminationStatus = [task terminationStatus], .output = bytesOf(bytes)};
}

}  // namespace morvella
