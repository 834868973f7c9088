#pragma once

#include "platform/system.hpp"

namespace morvella {

class CocoaApplication : public Application {
  public:
    void terminate(const Object* sender) override;
    [[nodiscard]] std::shared_ptr<void> beginActivity(const std::string& reason) override;
    void announce(const std::string& text) override;
    bool openFile(const std::string& path, const std::string& application) override;
};

class CocoaClock : public Clock {
  public:
    [[nodiscard]] Time now() const override;
    [[nodiscard]] std::string format(Time time, const std::string& dateFormat) const override;
};

class CocoaRunLoop : public RunLoop {
  public:
    void dispatchAsync(std::function<void()> work) override;
    void scheduleRepeatingTimer(double interval, std::function<void(Timer&)> tick) override;
};

class CocoaTaskRunner : public TaskRunner {
  public:
    std::optional<TaskResult> run(const Command& command) override;
};

}  // namespace morvella
