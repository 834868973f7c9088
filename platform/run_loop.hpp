#pragma once

#include <functional>

namespace morvella {

class Timer {
  public:
    virtual ~Timer() = default;

    /// No more ticks come after this.
    virtual void invalidate() = 0;
};

class RunLoop {
  public:
    virtual ~RunLoop() = default;

    /// Calls `work` on a later turn of the main queue.
    virtual void dispatchAsync(std::function<void()> work) = 0;

    /// Calls `tick` on the main run loop every `interval` seconds in the default mode, for the
    /// first time after one interval. The run loop holds the timer until it is invalidated.
    virtual void scheduleRepeatingTimer(double interval, std::function<void(Timer&)> tick) = 0;
};

}  // namespace morvella
