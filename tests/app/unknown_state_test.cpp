#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

/// Calls operations without the state that an earlier page should have established.
class UnknownStateTest : public InstallerTest {
  protected:
    UnknownStateTest() {
        useUserLibrary();
        controller.setDestinationURL(folderUrl("/d"));
    }

    void expectUnknownState(int line = __builtin_LINE()) {
        expectEffects({reachesUnknownState()}, line);
    }

    void expectUnknownStateWhenInstalling() {
        controller.startInstall();
        expectUnknownState();
        controller.installTo(destination);
        expectUnknownState();
        controller.installToOld(destination);
        expectUnknownState();
    }

    const FileUrl destination = FileUrl::directory("/d");
};

TEST_F(UnknownStateTest, IsReachedWithoutAUserLibrary) {
    controller.setUserLibPath(nullptr);
    controller.doInstallViewAppeared();
    expectUnknownState();
    expectUnknownStateWhenInstalling();
    controller.waitForUserLibraryAndProceedToInstall();
    expectUnknownState();
    EXPECT_FALSE(controller.makeZipBackup());
    expectUnknownState();
    EXPECT_FALSE(controller.compressFolderAtToZipFilePath("/folder", "/zip"));
    expectUnknownState();
}

TEST_F(UnknownStateTest, IsReachedWithoutADestination) {
    controller.setDestinationURL(nullptr);
    controller.startInstall();
    expectUnknownState();
}

TEST_F(UnknownStateTest, IsReachedWithoutAnApplicationsFolder) {
    folders.applications.clear();
    expectUnknownStateWhenInstalling();
}

TEST_F(UnknownStateTest, IsReachedWithoutADemoSetOrALiveApplication) {
    controller.setLiveAppPath(text("/Live.app"));
    controller.openDemoSet();
    expectUnknownState();
    controller.setDemoSetPath(text("/demo.als"));
    controller.setLiveAppPath(nullptr);
    controller.openDemoSet();
    expectUnknownState();
}

TEST_F(UnknownStateTest, IsReachedWhenAPathIsLostBeforeASheetIsAnswered) {
    disk.addFolder(installed);
    for (const bool losesUserLibrary : {true, false}) {
        useUserLibrary();
        controller.doInstallViewAppeared();
        journal.clear();
        losesUserLibrary ? controller.setUserLibPath(nullptr)
                         : controller.setDestinationURL(nullptr);
        window->answer(alertFirstButtonReturn, ControlState::on);
        expectUnknownState();
        window->answer(alertFirstButtonReturn);
    }

    disk.remove(userLibrary);
    controller.setUserLibPath(text(userLibrary));
    controller.waitForUserLibraryAndProceedToInstall();
    journal.clear();
    controller.setUserLibPath(nullptr);
    window->answer(alertFirstButtonReturn);
    expectUnknownState();
}

}  // namespace

}  // namespace morvella::tests
