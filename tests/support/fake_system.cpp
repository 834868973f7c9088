#include "support/fake_system.hpp"

#include <algorithm>
#include <sstream>

namespace morvella::tests {

std::string FakeClock::format(Time time, const std::string& dateFormat) const {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time.time_since_epoch());
    journal_.write(Kind::question,
                   "the second " + std::to_string(seconds.count()) + " as \"" + dateFormat + "\"");
    return stamp;
}

class FakeRunLoop::FakeTimer : public Timer {
  public:
    FakeTimer(Journal& journal, std::function<void(Timer&)> tick)
        : journal_(journal), tick_(std::move(tick)) {}
    void invalidate() override {
        valid_ = false;
        journal_.write(Kind::timer, "invalidated");
    }
    [[nodiscard]] bool valid() const { return valid_; }
    void tick() { tick_(*this); }

  private:
    Journal& journal_;
    std::function<void(Timer&)> tick_;
    bool valid_ = true;
};

void FakeRunLoop::dispatchAsync(std::function<void()> work) {
    journal_.write(Kind::queue, "work put on the main queue");
    queue_.push_back(std::move(work));
}

void FakeRunLoop::scheduleRepeatingTimer(double interval, std::function<void(Timer&)> tick) {
    std::ostringstream what;
    what << "every " << interval << " seconds";
    journal_.write(Kind::timer, what.str());
    timers_.push_back(std::make_shared<FakeTimer>(journal_, std::move(tick)));
}

void FakeRunLoop::drainMainQueue() {
    const auto now = std::exchange(queue_, {});
    for (const auto& work : now) {
        work();
    }
}

size_t FakeRunLoop::tick() {
    const auto now = timers_;
    for (const auto& timer : now) {
        timer->tick();
    }
    std::erase_if(timers_, [](const auto& timer) { return !timer->valid(); });
    return now.size();
}

std::optional<TaskResult> FakeTaskRunner::run(const Command& command) {
    std::string what = command.launchPath;
    for (const std::string& argument : command.arguments) {
        what += " | " + argument;
    }
    if (command.currentDirectoryPath) {
        what += " in " + *command.currentDirectoryPath;
    }
    journal_.write(Kind::command, what);

    std::optional<TaskResult> result = TaskResult{};
    for (const std::string& argument : command.arguments) {
        const auto found = results.find(argument);
        result = found == results.end() ? result : found->second;
    }
    if (!result || result->terminationStatus != 0) {
        return result;
    }
    for (const std::string& argument : command.arguments) {
        for (const std::string& file : archives[argument]) {
            disk_.addFile(command.arguments.back() + "/" + file);
        }
    }
    return result;
}

}  // namespace morvella::tests
