#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

/// The install sequence on a machine where every step succeeds unless a test says otherwise.
class OrchestrationTest : public InstallerTest {
  protected:
    OrchestrationTest() {
        useUserLibrary();
        disk.addFolder("/Users/Shared/Morvella");
        disk.addFile("/Users/ann/Library/Fonts/Archivo-Medium.ttf");
        disk.addFile("/Users/ann/Library/Fonts/OpenSans-Regular.ttf");
        tasks.archives["/Bundle/morvella.zip"] = {"Morvella/Morvella.app/Contents/Info.plist",
                                                  "Morvella/Sources/Vellicor.amxd"};
    }

    const std::string startedAndInstalled =
        "control: installation indicator started by settings indicator\n"
        "control: installation indicator shown\n"
        "log: Font already installed:Archivo-Medium.ttf\n"
        "log: Font already installed:OpenSans-Regular.ttf\n"
        "run: /usr/bin/ditto | -v | -x | -k | /Bundle/morvella.zip | "
        "/Users/ann/Music/User Library\n"
        "file: created /Applications/Morvella/\n"
        "log: Installing Tressimo.zip to /Applications/Morvella...\n"
        "run: /usr/bin/ditto | -v | -x | -k | /Bundle/Tressimo.zip | /Applications/Morvella\n" +
        hidingLine + "\n";
    static constexpr const char* hidden =
        "file: moved /Users/ann/Music/User Library/Morvella/Morvella.app/ to "
        "/Users/ann/Music/User Library/Morvella/.Morvella.app\n";
    static constexpr const char* ended =
        "control: installation indicator stopped by controller\n"
        "page: post-installation page\n";
};

TEST_F(OrchestrationTest, StartsAtOnceWithoutPreviousInstallation) {
    controller.doInstallViewAppeared();
    ASSERT_NE(controller.destinationURL(), nullptr);
    EXPECT_EQ(*controller.destinationURL(),
              FileUrl::directory("/Users/ann/Music/User Library/Morvella"));
    EXPECT_TRUE(journal.everything().starts_with(
        "asked: reachable /Users/ann/Music/User Library/Morvella/\n"));
    expectEffects(std::string(startedAndInstalled) + hidden + ended);
    EXPECT_EQ(viewController.shown, postInstallView);
    EXPECT_EQ(window->sheetsWaiting(), 0U);
    EXPECT_TRUE(controls.made.empty());
}

TEST_F(OrchestrationTest, FormsTheDestinationAnewEachTime) {
    controller.doInstallViewAppeared();
    controller.setUserLibPath(text("/Volumes/Audio/Lib/"));
    controller.doInstallViewAppeared();
    EXPECT_EQ(*controller.destinationURL(), FileUrl::directory("/Volumes/Audio/Lib/Morvella"));
}

TEST_F(OrchestrationTest, EveryStepWorksOnTheDestination) {
    controller.setDestinationURL(std::make_shared<const FileUrl>(FileUrl::directory("/Elsewhere")));
    disk.addFolder("/Elsewhere/Morvella.app");
    disk.addFile("/Elsewhere/Sources/Vellicor.amxd");
    controller.startInstall();
    EXPECT_EQ(journal.only({Kind::file}),
              lines({"file: created /Applications/Morvella/",
                     "file: moved /Elsewhere/Morvella.app/ to /Elsewhere/.Morvella.app"}));
    EXPECT_EQ(viewController.shown, postInstallView);
}

TEST_F(OrchestrationTest, EndsOnTheLastPageBehindASheetOfTheProcedure) {
    tasks.results["/Bundle/Tressimo.zip"] = TaskResult{.terminationStatus = 1};
    controller.doInstallViewAppeared();
    EXPECT_EQ(journal.only({Kind::sheet, Kind::page}),
              lines({"sheet: critical \"Could not install utilities, aborting.\" [Quit]",
                     "page: post-installation page"}));
    EXPECT_EQ(viewController.shown, postInstallView);
    EXPECT_EQ(window->sheetsWaiting(), 1U);
}

TEST_F(OrchestrationTest, StopsWithoutVerifyingWhenTheApplicationCannotBeHidden) {
    tasks.archives["/Bundle/morvella.zip"] = {"Morvella/Sources/Vellicor.amxd"};
    controller.doInstallViewAppeared();
    EXPECT_EQ(journal.everything().find("Vellicor.amxd"), std::string::npos);
    expectEffects(startedAndInstalled + lines({"log: aborting, couldn't hide the app file."}) +
                  terminationSheet("Install failed"));
    EXPECT_EQ(viewController.shown, initialView);
    window->answer(1000);
    expectEffects({"application: terminated by controller"});
}

TEST_F(OrchestrationTest, StopsWhenTheInstallationDoesNotVerify) {
    tasks.archives["/Bundle/morvella.zip"] = {"Morvella/Morvella.app/Contents/Info.plist"};
    controller.doInstallViewAppeared();
    expectEffects(std::string(startedAndInstalled) + hidden +
                  terminationSheet("Install failed to verify, aborting."));
    EXPECT_EQ(viewController.shown, initialView);
    window->answer(1000);
    expectEffects({"application: terminated by controller"});
}

TEST_F(OrchestrationTest, HidesTheApplicationBeforeItVerifies) {
    controller.doInstallViewAppeared();
    const std::string everything = journal.everything();
    const size_t moved = everything.find("file: moved");
    const size_t verified = everything.find("Sources/Vellicor.amxd");
    ASSERT_NE(verified, std::string::npos);
    EXPECT_LT(moved, verified);
}

TEST_F(OrchestrationTest, EndsByStoppingTheIndicatorAndShowingTheLastPage) {
    controller.endInstall();
    expectEverything({
        "control: installation indicator stopped by controller",
        "page: post-installation page",
    });
}

}  // namespace

}  // namespace morvella::tests
