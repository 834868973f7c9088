#pragma once

#include <string>

namespace morvella {

enum class StepState { done, current, toCome };

/// One of the steps of the installation that stand beside its pages.
struct Step {
    std::string name;
    StepState state = StepState::toCome;
    /// What is read out to whoever does not see the step's state.
    std::string spokenLabel;

    bool operator==(const Step&) const = default;
};

}  // namespace morvella
