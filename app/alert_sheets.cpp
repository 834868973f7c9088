#include "app/morvella_installer_view_controller.hpp"

namespace morvella {

void MorvellaInstallerViewController::terminateAppWithAlertSheet(const std::string& message) {
    const Alert alert{.style = AlertStyle::critical, .messageText = message, .buttons = {"Quit"}};
    const std::shared_ptr<const Object> self = viewController_.self();
    const std::shared_ptr<Window> window = this->window();
    window->makeKeyAndOrderFront(self.get());
    platform_.log("critical error:%@", message);
    window->beginSheet(
        alert, [this, self](const AlertAnswer&) { platform_.application.terminate(self.get()); });
}

void MorvellaInstallerViewController::unknownStateReached() {
    platform_.log("unknown state reached.");
    terminateAppWithAlertSheet(
        "The installer reached an unkown state, please try restarting the installer.\n"
        "If the problem persists, please contact support.");
}

bool MorvellaInstallerViewController::require(bool condition) {
    if (!condition) {
        unknownStateReached();
    }
    return condition;
}

void MorvellaInstallerViewController::alertSheet() {
    const Alert alert{.style = AlertStyle::warning,
                      .messageText = "There is a version of Morvella already installed.",
                      .buttons = {"Replace", "Overwrite", "Quit"}};
    const std::shared_ptr<const Object> self = viewController_.self();
    const std::shared_ptr<Window> window = this->window();
    window->makeKeyAndOrderFront(self.get());
    window->beginSheet(alert, [this, self](const AlertAnswer& answer) {
        // Both "Replace" and "Overwrite" proceed: their codes differ only in the lowest bit.
        if ((answer.response & ~1) != alertFirstButtonReturn) {
            platform_.application.terminate(self.get());
        }
    });
}

}  // namespace morvella
