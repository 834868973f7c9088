#pragma once

#include <chrono>
#include <string>

namespace morvella {

class Clock {
  public:
    using Time = std::chrono::system_clock::time_point;

    virtual ~Clock() = default;

    [[nodiscard]] virtual Time now() const = 0;

    /// `time` as text, by a date formatter of which only the format is set: the user's locale and
    /// calendar and the system's time zone hold.
    [[nodiscard]] virtual std::string format(Time time, const std::string& dateFormat) const = 0;
};

}  // namespace morvella
