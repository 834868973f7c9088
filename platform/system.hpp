#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/object.hpp"

namespace morvella {

class Application {
  public:
    virtual ~Application() = default;

    /// Terminates the application; scheduled work no longer runs. `sender` may be null.
    virtual void terminate(const Object* sender) = 0;

    /// Keeps the Mac awake and the application at full speed until the last copy of the result is
    /// gone. Activities may overlap. `reason` is for the system's diagnostics.
    [[nodiscard]] virtual std::shared_ptr<void> beginActivity(const std::string& reason) = 0;

    /// Has assistive technology such as VoiceOver say `text`.
    virtual void announce(const std::string& text) = 0;

    /// Asks the system to open the document at `path` with the application at `application`, given
    /// by its bundle or by an executable inside it. False if the system refused.
    virtual bool openFile(const std::string& path, const std::string& application) = 0;
};

class Clock {
  public:
    using Time = std::chrono::system_clock::time_point;

    virtual ~Clock() = default;

    [[nodiscard]] virtual Time now() const = 0;

    /// `time` as text in this format, with the user's locale and calendar and the system's time
    /// zone.
    [[nodiscard]] virtual std::string format(Time time, const std::string& dateFormat) const = 0;
};

class Timer {
  public:
    virtual ~Timer() = default;

    /// Stops the ticks.
    virtual void invalidate() = 0;
};

class RunLoop {
  public:
    virtual ~RunLoop() = default;

    /// Calls `work` on a later turn of the main queue.
    virtual void dispatchAsync(std::function<void()> work) = 0;

    /// Calls `tick` on the main run loop every `interval` seconds in the default mode, for the
    /// first time after one interval. The run loop retains the timer until it is invalidated.
    virtual void scheduleRepeatingTimer(double interval, std::function<void(Timer&)> tick) = 0;
};

/// A child process to run. Without a directory of its own it inherits the installer's.
struct Command {
    std::string launchPath = {};
    std::vector<std::string> arguments = {};
    std::optional<std::string> currentDirectoryPath = {};

    bool operator==(const Command&) const = default;
};

struct TaskResult {
    /// The exit status, or the number of the signal that ended the child.
    int terminationStatus = 0;
    /// The child's standard output and standard error, interleaved as written.
    std::string output = {};
};

class TaskRunner {
  public:
    virtual ~TaskRunner() = default;

    /// Runs the child and waits for it to end, without a time-out. Its output is read only
    /// afterwards, so it must fit in a pipe's buffer. Returns nothing if the child could not be
    /// started, which includes a NUL in the path, the directory or an argument.
    virtual std::optional<TaskResult> run(const Command& command) = 0;
};

}  // namespace morvella
