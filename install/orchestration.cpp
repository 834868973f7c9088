#include "app/morvella_installer_view_controller.hpp"
#include "app/product.hpp"
#include "platform/paths.hpp"

namespace morvella {

void MorvellaInstallerViewController::doInstallViewAppeared() {
    if (!require(userLibPath() != nullptr)) {
        return;
    }
    setDestinationURL(std::make_shared<const FileUrl>(
        FileUrl::directory(appendingPathComponent(*userLibPath(), product::folder))));
    if (platform_.files.isReachable(*destinationURL())) {
        askToDeletePreviousInstallation();
    } else {
        startInstall();
    }
}

void MorvellaInstallerViewController::askToDeletePreviousInstallation() {
    const std::shared_ptr<ProgressIndicator> backupIndicator =
        platform_.controls.makeProgressIndicator({.width = 16,
                                                  .height = 16,
                                                  .style = ProgressIndicatorStyle::spinning,
                                                  .indeterminate = true,
                                                  .hidden = true});
    // The suppression button serves as an ordinary check box; it does not suppress the alert.
    const Alert alert{
        .style = AlertStyle::warning,
        .messageText = "Previous installation of Morvella must be deleted.",
        .buttons = {"Continue", "Quit"},
        .showsHelp = true,
        .suppressionButton = SuppressionButton{"Make a zip backup of the current Morvella folder.\n"
                                               "Backups are located in the user library folder.",
                                               ControlState::on},
        .accessory = backupIndicator};
    const std::shared_ptr<const Object> self = viewController_.self();
    const std::shared_ptr<Window> window = this->window();
    window->makeKeyAndOrderFront(nullptr);
    window->beginSheet(alert, [this, self, backupIndicator](const AlertAnswer& answer) {
        previousInstallationAnswered(answer, self, *backupIndicator);
    });
}

/// A failure here does not stop the sequence: critical sheets appear one after the other while the
/// next step runs, and the application quits when the user answers one of them.
void MorvellaInstallerViewController::previousInstallationAnswered(
    const AlertAnswer& answer, const std::shared_ptr<const Object>& self,
    ProgressIndicator& backupIndicator) {
    if (answer.response != alertFirstButtonReturn) {
        platform_.application.terminate(self.get());
        return;
    }
    if (!require(userLibPath() && destinationURL())) {
        return;
    }
    const std::shared_ptr<void> activity = platform_.application.beginActivity("Backup");
    if (answer.suppressionState == ControlState::on) {
        backUpPreviousInstallation(*self, backupIndicator);
    }
    if (!moveToTrash(*destinationURL())) {
        platform_.log("couldn't move to trash.");
        terminateAppWithAlertSheet("Couldn't move Morvella folder to trash.");
    }
    if (platform_.files.isReachable(*destinationURL())) {
        terminateAppWithAlertSheet("Old Morvella folder still presists, aborting.");
    }
    platform_.runLoop.dispatchAsync([this, self] {
        platform_.log("starting install after taking care of the old installation.");
        startInstall();
    });
}

void MorvellaInstallerViewController::backUpPreviousInstallation(
    const Object& sender, ProgressIndicator& backupIndicator) {
    backupIndicator.setHidden(false);
    backupIndicator.startAnimation(&sender);
    if (!makeZipBackup()) {
        platform_.log("Couldn't make a backup of current installation.");
        terminateAppWithAlertSheet(
            "Couldn't make automatic backup of the current installation.\n\n"
            "Please backup and delete Morvella folder from the user library and run the installer "
            "again.");
    }
    backupIndicator.stopAnimation(&sender);
    backupIndicator.setHidden(true);
}

void MorvellaInstallerViewController::startInstall() {
    if (!require(isReadyToInstall() && destinationURL())) {
        return;
    }
    const std::shared_ptr<void> activity = platform_.application.beginActivity("Installation");
    // The sender is ignored by AppKit; passing the settings indicator is intentional.
    doInstallIndicator()->startAnimation(settingsIndicator().get());
    doInstallIndicator()->setHidden(false);
    const FileUrl destination = *destinationURL();
    removeFilesFromFolder({product::obsoleteItems.begin(), product::obsoleteItems.end()},
                          destination);
    installTo(destination);
    // The application is hidden first: the verification looks for its hidden name.
    if (!hideApp(destination)) {
        platform_.log("aborting, couldn't hide the app file.");
        terminateAppWithAlertSheet("Install failed");
        return;
    }
    if (!checkInstall(destination)) {
        terminateAppWithAlertSheet("Install failed to verify, aborting.");
        return;
    }
    endInstall();
}

void MorvellaInstallerViewController::endInstall() {
    doInstallIndicator()->stopAnimation(viewController_.self().get());
    viewController_.setView(postInstallView());
}

}  // namespace morvella
