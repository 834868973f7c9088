#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/controls.hpp"

namespace morvella {

/// The values are the platform's own.
enum class AlertStyle { warning = 0, informational = 1, critical = 2 };

/// The response code of the first button; each later button has the next number.
constexpr int alertFirstButtonReturn = 1000;

/// The platform's check box for suppressing an alert.
struct SuppressionButton {
    std::string title;
    ControlState state = ControlState::off;

    bool operator==(const SuppressionButton&) const = default;
};

/// Everything that an alert shows. If `buttons` is empty, the platform adds its default button.
struct Alert {
    AlertStyle style = AlertStyle::warning;
    std::string messageText = {};
    std::string informativeText = {};
    std::vector<std::string> buttons = {};
    bool showsHelp = false;
    std::optional<SuppressionButton> suppressionButton = {};
    std::shared_ptr<ProgressIndicator> accessory = {};
};

struct AlertAnswer {
    /// The response code of the button that was pressed.
    int response = 0;
    /// The suppression button's state when the alert was answered; off if there was none.
    ControlState suppressionState = ControlState::off;
};

using AlertAnswered = std::function<void(const AlertAnswer&)>;

}  // namespace morvella
