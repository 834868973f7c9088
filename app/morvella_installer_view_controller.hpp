#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/property.hpp"
#include "app/steps.hpp"
#include "platform/platform.hpp"

namespace morvella {

/// The installer: all of its state, and every operation of it. The operations are grouped by the
/// folder that implements them. Everything is called on the main thread. The interface file
/// connects every view and control before `viewDidLoad`.
///
/// Operations that can fail return whether they succeeded and report only through the log; the
/// caller decides what a failure means.
class MorvellaInstallerViewController {
  public:
    /// A text that is null when there is none.
    using Text = std::shared_ptr<const std::string>;

    /// `viewController` is this controller as the platform sees it and outlives it.
    MorvellaInstallerViewController(ViewController& viewController, const Platform& platform);
    MorvellaInstallerViewController(const MorvellaInstallerViewController&) = delete;
    MorvellaInstallerViewController& operator=(const MorvellaInstallerViewController&) = delete;

    // State: connected by the interface file.
    MORVELLA_PROPERTY(View, initialView, setInitialView)
    MORVELLA_PROPERTY(View, welcomeView, setWelcomeView)
    MORVELLA_PROPERTY(TextFieldCell, welcomeVersionString, setWelcomeVersionString)
    MORVELLA_PROPERTY(TextFieldCell, welcomeBetaString, setWelcomeBetaString)
    MORVELLA_PROPERTY(View, licenseView, setLicenseView)
    MORVELLA_PROPERTY(TextView, licenseText, setLicenseText)
    MORVELLA_PROPERTY(View, settingsView, setSettingsView)
    MORVELLA_PROPERTY(ProgressIndicator, settingsIndicator, setSettingsIndicator)
    MORVELLA_PROPERTY(TextFieldCell, settingsInfoText, setSettingsInfoText)
    MORVELLA_PROPERTY(TextFieldCell, settingsUserLibLabel, setSettingsUserLibLabel)
    MORVELLA_PROPERTY(Button, settingsNextButton, setSettingsNextButton)
    MORVELLA_PROPERTY(View, doInstallView, setDoInstallView)
    MORVELLA_PROPERTY(ProgressIndicator, doInstallIndicator, setDoInstallIndicator)
    MORVELLA_PROPERTY(View, postInstallView, setPostInstallView)
    MORVELLA_PROPERTY(Button, postInstallOpenDemoSetCheck, setPostInstallOpenDemoSetCheck)

    // State: written by the operations.
    MORVELLA_PROPERTY(bool, resourcesLoaded, setResourcesLoaded)
    MORVELLA_PROPERTY(const std::string, liveAppPath, setLiveAppPath)
    MORVELLA_PROPERTY(const std::string, userLibPath, setUserLibPath)
    MORVELLA_PROPERTY(const FileUrl, destinationURL, setDestinationURL)
    MORVELLA_PROPERTY(const std::string, demoSetPath, setDemoSetPath)

    // app/page_flow.cpp
    /// Resets the state and checks the bundle's resources; shows the welcome page if they are
    /// there.
    void viewDidLoad();
    /// Starts the work of the page that the controller shows.
    void viewDidAppear();
    void welcomeViewAppeared();
    void settingsViewAppeared();
    void postInstallViewAppeared();
    void welcomeButton();
    void licenseAcceptedButton();
    void beginInstallButton();
    void installDoneButton();

    // app/steps.cpp
    /// The steps listed beside the current page, in order.
    [[nodiscard]] std::vector<Step> steps() const;

    // app/resource_check.cpp
    bool checkAndLoadResources();

    // app/alert_sheets.cpp
    /// Shows a critical sheet with `message` whose only button quits. Returns at once: what the
    /// caller does next goes on behind the sheet.
    void terminateAppWithAlertSheet(const std::string& message);
    void unknownStateReached();
    /// Asks what to do with an existing installation. Not called by the installer.
    void alertSheet();

    // app/preferences.cpp: the installer's own preference suite. Not called by the installer.
    /// The stored value, or null.
    std::shared_ptr<DefaultsValue> getMorvellaAppPreferenceForKey(const std::string& key);
    void setMorvellaAppPreferenceToValueForKey(const std::shared_ptr<DefaultsValue>& value,
                                               const std::string& key);

    // live/launch_arguments.cpp
    bool setLiveAppURLFromArgs();
    bool setDemoSetURLFromArgs();

    // live/live_application.cpp
    /// Finds the User Library of the Live application at `liveApplication`, its bundle or the
    /// executable inside, and shows it. True also if its volume is not mounted now.
    bool setUserLibUsingLiveApp(const Text& liveApplication);
    void enableOpenDemoSetUI(bool enable);
    void openDemoSet();

    // live/waiting.cpp
    void waitForUserLibraryAndProceedToInstall();

    // install/orchestration.cpp
    void doInstallViewAppeared();
    void startInstall();
    void endInstall();

    // install/procedure.cpp, install/shared_data.cpp
    /// Puts every piece in its place. Where the suite goes depends on `userLibPath` alone.
    void installTo(const FileUrl& destination);
    /// Replaces an existing shared product folder instead of leaving it. Not called by the
    /// installer.
    void installToOld(const FileUrl& destination);

    // install/verification.cpp
    bool hideApp(const FileUrl& destination);
    bool checkInstall(const FileUrl& destination);

    // install/fonts.cpp
    bool installFontList(const std::vector<std::string>& fontNames);

    // install/removal.cpp
    /// Moves the items at the relative `paths` to the Trash, up to the first that cannot be moved.
    bool removeFilesFromFolder(const std::vector<std::string>& paths, const FileUrl& folder);

    // archive/archiver.cpp
    bool decompressResourceToURL(const std::string& resource, const FileUrl& destination);
    bool compressFolderAtToZipFilePath(const std::string& folder, const std::string& zipFile);

    // archive/backup.cpp
    bool makeZipBackup();

    // archive/trash.cpp
    /// The installer's only way of removing anything.
    bool moveToTrash(const FileUrl& item);

  private:
    [[nodiscard]] bool shows(const std::shared_ptr<View>& page) const;
    /// Never null.
    [[nodiscard]] std::shared_ptr<Window> window() const;

    /// Returns `condition`, after calling `unknownStateReached` if it is false: the operation
    /// called lacks what an earlier page should have found.
    bool require(bool condition);
    /// Whether the User Library and the Applications folder are known.
    [[nodiscard]] bool isReadyToInstall() const;

    void pollUntilReachable(const FileUrl& userLibrary, const std::shared_ptr<const Object>& self);
    void userLibraryBecameReachable(const Object* sender);
    /// Shows the line below the User Library and announces it.
    void showStatus(const std::string& status);

    void askToDeletePreviousInstallation();
    void previousInstallationAnswered(const AlertAnswer& answer,
                                      const std::shared_ptr<const Object>& self,
                                      ProgressIndicator& backupIndicator);
    void backUpPreviousInstallation(const Object& sender, ProgressIndicator& backupIndicator);

    void installFontsAndSuite();
    void installUtilities();
    void trashIfPresent(const FileUrl& item);
    void installSharedData();
    void replaceSharedData();
    void unpackSharedData(const FileUrl& sharedFolder, ErrorOut error);
    FileUrl fallBackToDocuments(ErrorOut error);

    ViewController& viewController_;
    Platform platform_;
};

}  // namespace morvella
