#include "app/morvella_installer_view_controller.hpp"

namespace morvella {

MorvellaInstallerViewController::MorvellaInstallerViewController(ViewController& viewController,
                                                                 const Platform& platform)
    : viewController_(viewController), platform_(platform) {}

void MorvellaInstallerViewController::viewDidLoad() {
    setResourcesLoaded(false);
    setLiveAppPath(nullptr);
    setUserLibPath(nullptr);
    setDestinationURL(nullptr);
    setDemoSetPath(nullptr);
    if (checkAndLoadResources()) {
        setResourcesLoaded(true);
        viewController_.setView(welcomeView());
    }
}

void MorvellaInstallerViewController::viewDidAppear() {
    for (const Step& step : steps()) {
        if (step.state == StepState::current) {
            platform_.application.announce(step.spokenLabel);
        }
    }
    if (shows(initialView())) {
        if (!resourcesLoaded()) {
            terminateAppWithAlertSheet(
                "Installer bundle corrupt, please dowload the installer again or contact support.");
        }
    } else if (shows(welcomeView())) {
        welcomeViewAppeared();
    } else if (shows(licenseView())) {
        // The licence page waits for its button.
    } else if (shows(settingsView())) {
        settingsViewAppeared();
    } else if (shows(doInstallView())) {
        doInstallViewAppeared();
    } else if (shows(postInstallView())) {
        postInstallViewAppeared();
    } else {
        unknownStateReached();
    }
}

void MorvellaInstallerViewController::welcomeViewAppeared() {
    if (!setLiveAppURLFromArgs()) {
        terminateAppWithAlertSheet("Installer can be run only through the provided Live Set");
    }
}

void MorvellaInstallerViewController::settingsViewAppeared() {
    if (!setUserLibUsingLiveApp(liveAppPath())) {
        terminateAppWithAlertSheet("Couldn't get user library path.");
        return;
    }
    waitForUserLibraryAndProceedToInstall();
}

void MorvellaInstallerViewController::postInstallViewAppeared() {
    // The last page waits for its button.
}

void MorvellaInstallerViewController::welcomeButton() {
    viewController_.setView(licenseView());
}

void MorvellaInstallerViewController::licenseAcceptedButton() {
    viewController_.setView(settingsView());
}

void MorvellaInstallerViewController::beginInstallButton() {
    viewController_.setView(doInstallView());
}

void MorvellaInstallerViewController::installDoneButton() {
    if (postInstallOpenDemoSetCheck()->state() == ControlState::on) {
        openDemoSet();
    }
    platform_.application.terminate(nullptr);
}

bool MorvellaInstallerViewController::shows(const std::shared_ptr<View>& page) const {
    return page && viewController_.view()->identity() == page->identity();
}

std::shared_ptr<Window> MorvellaInstallerViewController::window() const {
    return viewController_.view()->window();
}

}  // namespace morvella
