#pragma once

#include <string>

namespace morvella {

enum class StepState { done, current, toCome };

/// One of the installation steps listed beside the pages.
struct Step {
    std::string name;
    StepState state = StepState::toCome;
    /// What VoiceOver says. Includes the state, which is otherwise shown only visually.
    std::string spokenLabel;

    bool operator==(const Step&) const = default;
};

}  // namespace morvella
