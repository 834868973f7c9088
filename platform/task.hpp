#pragma once

#include <optional>
#include <string>
#include <vector>

namespace morvella {

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
    /// What the child wrote to standard output and standard error together, as it came.
    std::string output = {};
};

class TaskRunner {
  public:
    virtual ~TaskRunner() = default;

    /// Runs the child and returns when it has ended, without a time-out. What it prints is read
    /// only then, so it must fit in a pipe's buffer. Nothing is returned if it could not be
    /// started, as nothing can that has a NUL in its path, its directory or an argument.
    virtual std::optional<TaskResult> run(const Command& command) = 0;
};

}  // namespace morvella
