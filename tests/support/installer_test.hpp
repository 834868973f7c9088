#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "app/morvella_installer_view_controller.hpp"
#include "support/fake_bundle.hpp"
#include "support/fake_controls.hpp"
#include "support/fake_files.hpp"
#include "support/fake_system.hpp"
#include "support/fake_user_defaults.hpp"
#include "support/fake_window.hpp"
#include "support/journal.hpp"
#include "support/vocabulary.hpp"

namespace morvella::tests {

using Controller = MorvellaInstallerViewController;

/// A fake of the whole platform, with one journal.
struct FakePlatform {
    Journal journal;
    FakeApplication application{journal};
    FakeBundles bundles{journal};
    FakeClock clock{journal};
    FakeControlFactory controls{journal};
    FakeDisk disk{journal};
    FakeLog log{journal};
    FakeRunLoop runLoop{journal};
    FakeStandardFolders folders{journal};
    FakeTaskRunner tasks{journal, disk};
    FakeUserDefaultsSuites userDefaults{journal};

    Platform platform{application, bundles, clock,   controls, disk,        disk,
                      log,         runLoop, folders, tasks,    userDefaults};
};

/// The controller on a fake platform, with every view and control connected. The home folder is
/// "/Users/ann"; all of the bundle's resources are in "/Bundle".
class InstallerTest : public ::testing::Test, protected FakePlatform {
  protected:
    InstallerTest();

    std::shared_ptr<FakeView> makeView(const std::string& name) {
        return std::make_shared<FakeView>(name, window);
    }

    static std::shared_ptr<const std::string> text(std::string_view text) {
        return std::make_shared<const std::string>(text);
    }
    static std::shared_ptr<const FileUrl> folderUrl(std::string_view path) {
        return std::make_shared<const FileUrl>(FileUrl::directory(path));
    }
    static std::string textOf(const std::shared_ptr<const std::string>& text) {
        return text ? *text : "(nothing)";
    }

    /// Connects every view and control, as the interface file does.
    void connect(Controller& target);

    /// Gives the installer a launch argument.
    void launchWith(const std::string& key, const std::string& value);

    /// Adds Live at `bundle`, with preferences that name `userLibrary`.
    void installLive(const std::string& bundle, const std::string& bundleVersion,
                     const std::string& version);

    /// Creates `userLibrary` and makes it the User Library.
    void useUserLibrary();

    /// Adds the product's fonts to the user's font folder.
    void addFonts();

    /// Makes `change` fail. It is named as in the journal: "trashed /x/".
    void refuse(const std::string& change, const std::string& reason) {
        disk.outcomes[change] = {.error = Error{reason}};
    }

    /// Makes the archiver fail on this archive or zip file.
    void failArchiver(const std::string& path) {
        tasks.results[path] = TaskResult{.terminationStatus = 1};
    }

    /// The first line that `hideApp` logs. A test of its own checks the text.
    static std::string firstLineOfHideApp();
    const std::string hidingLine = firstLineOfHideApp();

    /// Compares the journal since the last comparison, except questions.
    void expectEffects(std::initializer_list<std::string_view> expected,
                       int line = __builtin_LINE());
    /// The same, including questions.
    void expectEverything(std::initializer_list<std::string_view> expected,
                          int line = __builtin_LINE());

    const std::string userLibrary = "/Users/ann/Music/User Library";
    const std::string installed = userLibrary + "/Morvella";
    /// The demo Live Set if the launch argument is "/Kit/".
    const std::string demoSet = "/Kit/Morvella Basic Demo Project/Morvella Basic Demo.als";

    std::shared_ptr<FakeWindow> window = std::make_shared<FakeWindow>(journal);
    FakeViewController viewController{journal};
    Controller controller{viewController, platform};

    std::shared_ptr<FakeView> initialView = makeView("initial view");
    std::shared_ptr<FakeView> welcomeView = makeView("welcome page");
    std::shared_ptr<FakeView> licenseView = makeView("licence page");
    std::shared_ptr<FakeView> settingsView = makeView("settings page");
    std::shared_ptr<FakeView> doInstallView = makeView("installation page");
    std::shared_ptr<FakeView> postInstallView = makeView("post-installation page");
    std::shared_ptr<FakeButton> openDemoSetCheck =
        std::make_shared<FakeButton>("check box", journal);
};

}  // namespace morvella::tests
