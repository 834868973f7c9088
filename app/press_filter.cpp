#include "app/press_filter.hpp"

#include <algorithm>

namespace morvella {

void PressFilter::shown(double time) {
    last_ = time;
    ignoring_ = true;
}

bool PressFilter::counts(double time, bool isRepeat) {
    constexpr double pause = 0.5;
    if (!isRepeat && time - last_ >= pause) {
        ignoring_ = false;
    }
    // A press queued during a page's work is older than what has been shown since.
    last_ = std::max(last_, time);
    return !ignoring_ && !isRepeat;
}

}  // namespace morvella
