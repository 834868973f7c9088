#pragma once

#include <functional>

namespace morvella {

/// Runs `work`, an entry point called by the platform, and catches Objective-C exceptions: the
/// event loop would swallow them and carry on. An exception is logged and the unknown-state handler
/// is called. If that raises too, or none is set, the application terminates.
void guarded(const std::function<void()>& work);

/// Runs `work`, which reports a failure to the user. An Objective-C exception is logged and the
/// application terminates, since a report would fail again.
void runOrTerminate(const std::function<void()>& work);

/// Sets the handler of the whole process. `owner` identifies who has set it.
void setUnknownStateHandler(const void* owner, std::function<void()> handler);

/// Removes the handler if it is still the one that `owner` has set.
void clearUnknownStateHandler(const void* owner);

}  // namespace morvella
