#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "app/property.hpp"
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

    // State: connected by the interface file.
    [[nodiscard]] std::shared_ptr<View> initialView() const { return initialView_.get(); }
    void setInitialView(std::shared_ptr<View> view) { initialView_.set(std::move(view)); }
    [[nodiscard]] std::shared_ptr<View> welcomeView() const { return welcomeView_.get(); }
    void setWelcomeView(std::shared_ptr<View> view) { welcomeView_.set(std::move(view)); }
    [[nodiscard]] std::shared_ptr<TextFieldCell> welcomeVersionString() const {
        return welcomeVersionString_.get();
    }
    void setWelcomeVersionString(std::shared_ptr<TextFieldCell> cell) {
        welcomeVersionString_.set(std::move(cell));
    }
    [[nodiscard]] std::shared_ptr<TextFieldCell> welcomeBetaString() const {
        return welcomeBetaString_.get();
    }
    void setWelcomeBetaString(std::shared_ptr<TextFieldCell> cell) {
        welcomeBetaString_.set(std::move(cell));
    }
    [[nodiscard]] std::shared_ptr<View> licenseView() const { return licenseView_.get(); }
    void setLicenseView(std::shared_ptr<View> view) { licenseView_.set(std::move(view)); }
    [[nodiscard]] std::shared_ptr<TextView> licenseText() const { return licenseText_.get(); }
    void setLicenseText(std::shared_ptr<TextView> view) { licenseText_.set(std::move(view)); }
    [[nodiscard]] std::shared_ptr<View> settingsView() const { return settingsView_.get(); }
    void setSettingsView(std::shared_ptr<View> view) { settingsView_.set(std::move(view)); }
    [[nodiscard]] std::shared_ptr<ProgressIndicator> settingsIndicator() const {
        return settingsIndicator_.get();
    }
    void setSettingsIndicator(std::shared_ptr<ProgressIndicator> indicator) {
        settingsIndicator_.set(std::move(indicator));
    }
    [[nodiscard]] std::shared_ptr<TextFieldCell> settingsInfoText() const {
        return settingsInfoText_.get();
    }
    void setSettingsInfoText(std::shared_ptr<TextFieldCell> cell) {
        settingsInfoText_.set(std::move(cell));
    }
    [[nodiscard]] std::shared_ptr<TextFieldCell> settingsUserLibLabel() const {
        return settingsUserLibLabel_.get();
    }
    void setSettingsUserLibLabel(std::shared_ptr<TextFieldCell> cell) {
        settingsUserLibLabel_.set(std::move(cell));
    }
    [[nodiscard]] std::shared_ptr<Button> settingsNextButton() const {
        return settingsNextButton_.get();
    }
    void setSettingsNextButton(std::shared_ptr<Button> button) {
        settingsNextButton_.set(std::move(button));
    }
    [[nodiscard]] std::shared_ptr<View> doInstallView() const { return doInstallView_.get(); }
    void setDoInstallView(std::shared_ptr<View> view) { doInstallView_.set(std::move(view)); }
    [[nodiscard]] std::shared_ptr<ProgressIndicator> doInstallIndicator() const {
        return doInstallIndicator_.get();
    }
    void setDoInstallIndicator(std::shared_ptr<ProgressIndicator> indicator) {
        doInstallIndicator_.set(std::move(indicator));
    }
    [[nodiscard]] std::shared_ptr<View> postInstallView() const { return postInstallView_.get(); }
    void setPostInstallView(std::shared_ptr<View> view) { postInstallView_.set(std::move(view)); }
    [[nodiscard]] std::shared_ptr<Button> postInstallOpenDemoSetCheck() const {
        return postInstallOpenDemoSetCheck_.get();
    }
    void setPostInstallOpenDemoSetCheck(std::shared_ptr<Button> checkBox) {
        postInstallOpenDemoSetCheck_.set(std::move(checkBox));
    }

    // State: written by the operations.
    [[nodiscard]] bool resourcesLoaded() const { return resourcesLoaded_; }
    void setResourcesLoaded(bool loaded) { resourcesLoaded_ = loaded; }
    [[nodiscard]] Text liveAppPath() const { return liveAppPath_.get(); }
    void setLiveAppPath(Text path) { liveAppPath_.set(std::move(path)); }
    [[nodiscard]] Text userLibPath() const { return userLibPath_.get(); }
    void setUserLibPath(Text path) { userLibPath_.set(std::move(path)); }
    [[nodiscard]] std::shared_ptr<const FileUrl> destinationURL() const {
        return destinationURL_.get();
    }
    void setDestinationURL(std::shared_ptr<const FileUrl> url) {
        destinationURL_.set(std::move(url));
    }
    [[nodiscard]] Text demoSetPath() const { return demoSetPath_.get(); }
    void setDemoSetPath(Text path) { demoSetPath_.set(std::move(path)); }

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
    /// The window of the controller's view; the controller shows a view whenever this is asked for.
    [[nodiscard]] std::shared_ptr<Window> window() const;
    [[nodiscard]] bool isReachable(const std::string& path) const;

    void pollUntilReachable(const FileUrl& userLibrary, const std::shared_ptr<const Object>& self);
    void userLibraryBecameReachable(const Object* sender);

    void askToDeletePreviousInstallation();
    void previousInstallationAnswered(const AlertAnswer& answer,
                                      const std::shared_ptr<const Object>& self,
                                      ProgressIndicator& backupIndicator);
    void backUpPreviousInstallation(const Object& sender, ProgressIndicator& backupIndicator);

    bool installFont(const std::string& name);
    void installFontsAndSuite();
    void installUtilities();
    void trashIfPresent(const FileUrl& item);
    [[nodiscard]] FileUrl sharedFolder(ErrorOut error) const;
    void installSharedData(const FileUrl& sharedFolder, ErrorOut error);
    FileUrl fallBackToDocuments(ErrorOut error);
    void createProductFolder(const FileUrl& folder, ErrorOut error);

    ViewController& viewController_;
    Platform platform_;

    Property<View> initialView_;
    Property<View> welcomeView_;
    Property<TextFieldCell> welcomeVersionString_;
    Property<TextFieldCell> welcomeBetaString_;
    Property<View> licenseView_;
    Property<TextView> licenseText_;
    Property<View> settingsView_;
    Property<ProgressIndicator> settingsIndicator_;
    Property<TextFieldCell> settingsInfoText_;
    Property<TextFieldCell> settingsUserLibLabel_;
    Property<Button> settingsNextButton_;
    Property<View> doInstallView_;
    Property<ProgressIndicator> doInstallIndicator_;
    Property<View> postInstallView_;
    Property<Button> postInstallOpenDemoSetCheck_;

    std::atomic<bool> resourcesLoaded_ = false;
    Property<const std::string> liveAppPath_;
    Property<const std::string> userLibPath_;
    Property<const FileUrl> destinationURL_;
    Property<const std::string> demoSetPath_;
};

}  // namespace morvella
