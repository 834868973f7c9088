#include "support/fake_controls.hpp"

#include <sstream>

namespace morvella::tests {

std::string textOf(ControlState state) {
    return state == ControlState::on ? "on" : state == ControlState::off ? "off" : "mixed";
}

void FakeButton::setState(ControlState state) {
    currentState = state;
    write(textOf(state));
}

std::shared_ptr<ProgressIndicator> FakeControlFactory::makeProgressIndicator(
    const ProgressIndicatorSettings& settings) {
    std::ostringstream what;
    what << "new indicator made at (" << settings.x << ", " << settings.y << "), " << settings.width
         << " by " << settings.height
         << (settings.style == ProgressIndicatorStyle::spinning ? ", spinning" : ", bar")
         << (settings.indeterminate ? ", indeterminate" : "")
         << (settings.hidden ? ", hidden" : "");
    journal_.write(Kind::control, what.str());
    auto indicator = std::make_shared<FakeProgressIndicator>("new indicator", journal_);
    made.push_back(indicator);
    return indicator;
}

}  // namespace morvella::tests
