#include "app/press_filter.hpp"

namespace morvella {

void PressFilter::shown(double time) {
    shown_ = time;
}

bool PressFilter::counts(const Press& press) {
    const bool counts = press.time >= shown_ && !continues(press);
    if (press.key) {
        lastPresses_[*press.key] = press.time;
    }
    return counts;
}

/// Whether the press is a later one of a multiple press.
bool PressFilter::continues(const Press& press) const {
    if (!press.key) {
        return press.clickCount > 1;
    }
    const auto last = lastPresses_.find(*press.key);
    return press.isRepeat ||
           (last != lastPresses_.end() && press.time - last->second <= press.doubleClickInterval);
}

}  // namespace morvella
