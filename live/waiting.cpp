#include "app/morvella_installer_view_controller.hpp"

namespace morvella {

void MorvellaInstallerViewController::waitForUserLibraryAndProceedToInstall() {
    if (!require(userLibPath() != nullptr)) {
        return;
    }
    if (platform_.files.isReachable(*userLibPath())) {
        settingsNextButton()->setEnabled(true);
        return;
    }
    platform_.log("UL unavailable");
    showStatus("Status: Waiting for the volume to become available...");
    const std::shared_ptr<const Object> self = viewController_.self();
    settingsIndicator()->startAnimation(self.get());
    settingsIndicator()->setHidden(false);
    const Alert alert{
        .style = AlertStyle::critical,
        .messageText = "User Library is currently not available",
        .informativeText =
            "If you are using external or network drive please make sure that it is connected.\n"
            "Once it's connected the installation will proceed."};
    const std::shared_ptr<Window> window = this->window();
    window->makeKeyAndOrderFront(self.get());
    window->beginSheet(alert, [this, self](const AlertAnswer&) {
        if (require(userLibPath() != nullptr)) {
            pollUntilReachable(platform_.files.fileUrl(*userLibPath()), self);
        }
    });
}

void MorvellaInstallerViewController::pollUntilReachable(
    const FileUrl& userLibrary, const std::shared_ptr<const Object>& self) {
    constexpr double secondsBetweenTests = 5.0;
    const auto activity = platform_.application.beginActivity("Waiting for the User Library");
    platform_.runLoop.scheduleRepeatingTimer(secondsBetweenTests,
                                             [this, self, userLibrary, activity](Timer& timer) {
                                                 if (platform_.files.isReachable(userLibrary)) {
                                                     timer.invalidate();
                                                     userLibraryBecameReachable(self.get());
                                                 }
                                             });
}

void MorvellaInstallerViewController::userLibraryBecameReachable(const Object* sender) {
    settingsNextButton()->setEnabled(true);
    showStatus("User library available, click next to proceed");
    settingsIndicator()->setHidden(true);
    settingsIndicator()->stopAnimation(sender);
    // Intentional repeat: the button must be enabled after the indicator is gone.
    settingsNextButton()->setEnabled(true);
}

void MorvellaInstallerViewController::showStatus(const std::string& status) {
    settingsInfoText()->setTitle(status);
    platform_.application.announce(status);
}

}  // namespace morvella
