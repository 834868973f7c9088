#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

/// The install sequence on a machine where every step succeeds unless a test says otherwise.
class OrchestrationTest : public InstallerTest {
  protected:
    OrchestrationTest() {
        useUserLibrary();
        addFonts();
        disk.addFolder("/Users/Shared/Morvella");
        tasks.archives["/Bundle/morvella.zip"] = {"Morvella/Morvella.app/Contents/Info.plist",
                                                  "Morvella/Sources/Vellicor.amxd"};
    }

    const std::string startsAndInstalls = startsIndicator() + "\n" + keepsFonts() + "\n" +
                                          unpacks("morvella.zip", userLibrary) + "\n" +
                                          installsUtilities() + "\n" + hidingLine;
    const std::string hides =
        "file: moved " + installed + "/Morvella.app/ to " + installed + "/.Morvella.app";
};

TEST_F(OrchestrationTest, StartsAtOnceWithoutAPreviousInstallation) {
    controller.doInstallViewAppeared();
    ASSERT_NE(controller.destinationURL(), nullptr);
    EXPECT_EQ(*controller.destinationURL(), FileUrl::directory(installed));
    EXPECT_TRUE(journal.everything().starts_with("asked: reachable " + installed + "/\n"));
    expectEffects({startsAndInstalls, hides, showsLastPage()});
    EXPECT_EQ(viewController.shown, postInstallView);
    EXPECT_EQ(window->sheetsWaiting(), 0U);
    EXPECT_TRUE(controls.made.empty());
}

TEST_F(OrchestrationTest, RecomputesTheDestinationEachTime) {
    controller.doInstallViewAppeared();
    controller.setUserLibPath(text("/Volumes/Audio/Lib/"));
    controller.doInstallViewAppeared();
    EXPECT_EQ(*controller.destinationURL(), FileUrl::directory("/Volumes/Audio/Lib/Morvella"));
}

TEST_F(OrchestrationTest, HidesAndVerifiesInTheDestination) {
    controller.setDestinationURL(folderUrl("/Elsewhere"));
    disk.addFolder("/Elsewhere/Morvella.app");
    disk.addFile("/Elsewhere/Sources/Vellicor.amxd");
    controller.startInstall();
    EXPECT_EQ(journal.only({Kind::file}),
              lines({createsFolder("/Applications/Morvella"),
                     "file: moved /Elsewhere/Morvella.app/ to /Elsewhere/.Morvella.app"}));
    EXPECT_EQ(viewController.shown, postInstallView);
}

TEST_F(OrchestrationTest, ReachesTheLastPageBehindTheSheetOfAFailedStep) {
    failArchiver("/Bundle/Tressimo.zip");
    controller.doInstallViewAppeared();
    EXPECT_EQ(journal.only({Kind::sheet, Kind::page}),
              lines({criticalSheet("Could not install utilities, aborting."),
                     "page: post-installation page"}));
    EXPECT_EQ(window->sheetsWaiting(), 1U);
}

TEST_F(OrchestrationTest, StopsWithoutVerifyingWhenTheApplicationCannotBeHidden) {
    tasks.archives["/Bundle/morvella.zip"] = {"Morvella/Sources/Vellicor.amxd"};
    controller.doInstallViewAppeared();
    EXPECT_EQ(journal.everything().find("Vellicor.amxd"), std::string::npos);
    expectEffects({startsAndInstalls, "log: aborting, couldn't hide the app file.",
                   showsCriticalSheet("Install failed")});
    EXPECT_EQ(viewController.shown, initialView);
    window->answer(1000);
    expectEffects({quits()});
}

TEST_F(OrchestrationTest, StopsWhenVerificationFails) {
    tasks.archives["/Bundle/morvella.zip"] = {"Morvella/Morvella.app/Contents/Info.plist"};
    controller.doInstallViewAppeared();
    expectEffects(
        {startsAndInstalls, hides, showsCriticalSheet("Install failed to verify, aborting.")});
    EXPECT_EQ(viewController.shown, initialView);
    window->answer(1000);
    expectEffects({quits()});
}

}  // namespace

}  // namespace morvella::tests
