#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/property.hpp"
#include "app/steps.hpp"
#include "platform/platform.hpp"

namespace morvella {

/// The installer's whole state and all of its operations, grouped by the folder that implements
/// them. Everything is called on the main thread. The interface file connects every view and
/// control before `viewDidLoad`.
///
/// Operations that can fail return whether they succeeded and report only through the log; the
/// caller decides what a failure means.
class MorvellaInstallerViewController {
  public:
    /// Null if there is no text.
    using Text = std::shared_ptr<const std::string>;

    /// `viewController` is this controller's counterpart on the platform and outlives it.
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
    /// complete.
    void viewDidLoad();
    /// Starts the current page's work.
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
    /// Shows a critical sheet with `message` and a single button, which quits. Returns at once: the
    /// caller continues behind the sheet.
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
    /// Finds and shows the User Library of the Live application at `liveApplication`, a bundle or
    /// the executable inside it. Also true if the library's volume is not mounted.
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
    /// Installs every part. The suite's destination depends only on `userLibPath`.
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
    /// Moves the items at `paths`, relative to `folder`, to the Trash, up to the first failure.
    bool removeFilesFromFolder(const std::vector<std::string>& paths, const FileUrl& folder);

    // archive/archiver.cpp
    bool decompressResourceToURL(const std::string& resource, const FileUrl& destination);
    bool compressFolderAtToZipFilePath(const std::string& folder, const std::string& zipFile);

    // archive/backup.cpp
    bool makeZipBackup();

    // archive/trash.cpp
    /// The only way the installer removes anything.
    bool moveToTrash(const FileUrl& item);

  private:
    [[nodiscard]] bool shows(const std::shared_ptr<View>& page) const;
    /// Never null.
    [[nodiscard]] std::shared_ptr<Window> window() const;

    /// Returns `condition`, which an earlier page should have established; if it is false, calls
    /// `unknownStateReached` first.
    bool require(bool condition);
    /// Whether the User Library and the Applications folder are known.
    [[nodiscard]] bool isReadyToInstall() const;

    void pollUntilReachable(const FileUrl& userLibrary, const std::shared_ptr<const Object>& self);
    void userLibraryBecameReachable(const Object* sender);
    /// Shows `status` in the line below the User Library and announces it.
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
