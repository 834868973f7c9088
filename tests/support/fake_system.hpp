#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/log.hpp"
#include "platform/system.hpp"
#include "support/fake_files.hpp"
#include "support/fake_object.hpp"
#include "support/journal.hpp"

namespace morvella::tests {

class FakeLog : public Log {
  public:
    explicit FakeLog(Journal& journal) : journal_(journal) {}

  private:
    void writeLine(const std::string& line) override { journal_.write(Kind::log, line); }

    Journal& journal_;
};

class FakeApplication : public Application {
  public:
    explicit FakeApplication(Journal& journal) : journal_(journal) {}
    void terminate(const Object* sender) override {
        journal_.write(Kind::application, "terminated by " + nameOf(sender));
    }
    std::shared_ptr<void> beginActivity(const std::string& /*reason*/) override {
        return activity_;
    }
    void announce(const std::string& text) override { announced.push_back(text); }
    bool openFile(const std::string& path, const std::string& application) override {
        journal_.write(Kind::application, "open " + path + " with " + application);
        return opens;
    }

    [[nodiscard]] bool isActive() const { return activity_.use_count() > 1; }

    bool opens = true;
    std::vector<std::string> announced;

  private:
    Journal& journal_;
    std::shared_ptr<void> activity_ = std::make_shared<int>();
};

/// A stopped clock, which formats every time as `stamp`.
class FakeClock : public Clock {
  public:
    explicit FakeClock(Journal& journal) : journal_(journal) {}
    [[nodiscard]] Time now() const override { return Time(std::chrono::seconds(1234567890)); }
    [[nodiscard]] std::string format(Time time, const std::string& dateFormat) const override;

    std::string stamp = "2009-02-13(233130)";

  private:
    Journal& journal_;
};

/// A main queue and timers that the test runs by hand.
class FakeRunLoop : public RunLoop {
  public:
    explicit FakeRunLoop(Journal& journal) : journal_(journal) {}
    void dispatchAsync(std::function<void()> work) override;
    void scheduleRepeatingTimer(double interval, std::function<void(Timer&)> tick) override;

    /// Runs the work that is on the main queue now.
    void drainMainQueue();
    /// Fires every scheduled timer once. Returns how many fired.
    size_t tick();

  private:
    class FakeTimer;

    Journal& journal_;
    std::vector<std::function<void()>> queue_;
    std::vector<std::shared_ptr<FakeTimer>> timers_;
};

/// Starts no process. An unpacking command adds its archive's files to the disk.
class FakeTaskRunner : public TaskRunner {
  public:
    FakeTaskRunner(Journal& journal, FakeDisk& disk) : journal_(journal), disk_(disk) {}
    /// Records the launch path and the arguments, separated by " | ".
    std::optional<TaskResult> run(const Command& command) override;

    /// The files in each archive, by its path. Unpacking adds them below the last argument.
    std::map<std::string, std::vector<std::string>> archives;
    /// Keyed by the path of the archive or zip file; any other command prints nothing and succeeds.
    /// nullopt means that the command cannot be started. A failed command unpacks nothing.
    std::map<std::string, std::optional<TaskResult>> results;

  private:
    Journal& journal_;
    FakeDisk& disk_;
};

}  // namespace morvella::tests
