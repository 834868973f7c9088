#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

class FontsTest : public InstallerTest {
  protected:
    FontsTest() { disk.addFolder("/Users/ann/Library/Fonts"); }

    const std::string archivo = "/Users/ann/Library/Fonts/Archivo-Medium.ttf";
    const std::string openSans = "/Users/ann/Library/Fonts/OpenSans-Regular.ttf";
};

TEST_F(FontsTest, AreCopiedOneAfterTheOther) {
    EXPECT_TRUE(controller.installFontList({"Archivo-Medium.ttf", "OpenSans-Regular.ttf"}));
    expectEverything({
        "asked: path of resource Archivo-Medium.ttf",
        "asked: reachable /Users/ann/Library/Fonts/Archivo-Medium.ttf",
        "log: Copying: (file:///Bundle/Archivo-Medium.ttf) To: "
        "(file:///Users/ann/Library/Fonts/Archivo-Medium.ttf)",
        "file: copied /Bundle/Archivo-Medium.ttf to /Users/ann/Library/Fonts/Archivo-Medium.ttf",
        "asked: reachable /Users/ann/Library/Fonts/Archivo-Medium.ttf, and why not",
        "asked: path of resource OpenSans-Regular.ttf",
        "asked: reachable /Users/ann/Library/Fonts/OpenSans-Regular.ttf",
        "log: Copying: (file:///Bundle/OpenSans-Regular.ttf) To: "
        "(file:///Users/ann/Library/Fonts/OpenSans-Regular.ttf)",
        "file: copied /Bundle/OpenSans-Regular.ttf to "
        "/Users/ann/Library/Fonts/OpenSans-Regular.ttf",
        "asked: reachable /Users/ann/Library/Fonts/OpenSans-Regular.ttf, and why not",
    });
}

TEST_F(FontsTest, AlreadyThereAreKeptAsTheyAre) {
    disk.addFile(archivo, "another version");
    disk.addFile(openSans, "another version");
    EXPECT_TRUE(controller.installFontList({"Archivo-Medium.ttf", "OpenSans-Regular.ttf"}));
    expectEffects({
        "log: Font already installed:Archivo-Medium.ttf",
        "log: Font already installed:OpenSans-Regular.ttf",
    });
    EXPECT_EQ(disk.items[archivo].contents, "another version");
}

TEST_F(FontsTest, MissingOneIsCopiedBesideTheOther) {
    disk.addFile(archivo);
    EXPECT_TRUE(controller.installFontList({"Archivo-Medium.ttf", "OpenSans-Regular.ttf"}));
    EXPECT_EQ(journal.only({Kind::file}), lines({"file: copied /Bundle/OpenSans-Regular.ttf to "
                                                 "/Users/ann/Library/Fonts/OpenSans-Regular.ttf"}));
    EXPECT_TRUE(disk.holds(openSans));
}

TEST_F(FontsTest, AlreadyThereAreVerifiedAgain) {
    disk.addFile(archivo);
    EXPECT_TRUE(controller.installFontList({"Archivo-Medium.ttf"}));
    expectEverything({
        "asked: path of resource Archivo-Medium.ttf",
        "asked: reachable /Users/ann/Library/Fonts/Archivo-Medium.ttf",
        "log: Font already installed:Archivo-Medium.ttf",
        "asked: reachable /Users/ann/Library/Fonts/Archivo-Medium.ttf, and why not",
    });
}

TEST_F(FontsTest, AFailedCopyLogsTwiceAndDoesNotStopTheOthers) {
    disk.outcomes
        ["copied /Bundle/Archivo-Medium.ttf to "
         "/Users/ann/Library/Fonts/Archivo-Medium.ttf"] = {.error = Error{"no space"}};
    EXPECT_FALSE(controller.installFontList({"Archivo-Medium.ttf", "OpenSans-Regular.ttf"}));
    EXPECT_EQ(journal.only({Kind::log}),
              lines({
                  "log: Copying: (file:///Bundle/Archivo-Medium.ttf) To: "
                  "(file:///Users/ann/Library/Fonts/Archivo-Medium.ttf)",
                  "log: Copy error:no space",
                  "log: Can't find font in the users' fonts library:nothing at "
                  "/Users/ann/Library/Fonts/Archivo-Medium.ttf",
                  "log: Copying: (file:///Bundle/OpenSans-Regular.ttf) To: "
                  "(file:///Users/ann/Library/Fonts/OpenSans-Regular.ttf)",
              }));
    EXPECT_TRUE(disk.holds(openSans));
}

TEST_F(FontsTest, AFailureOfTheLastOneFailsTheList) {
    disk.outcomes
        ["copied /Bundle/OpenSans-Regular.ttf to "
         "/Users/ann/Library/Fonts/OpenSans-Regular.ttf"] = {.error = Error{"no space"}};
    EXPECT_FALSE(controller.installFontList({"Archivo-Medium.ttf", "OpenSans-Regular.ttf"}));
}

/// The error object alone decides on the line, and the file alone on the result.
TEST_F(FontsTest, ACopyCountsIfTheFontIsThereAfterwards) {
    const std::string copied =
        "copied /Bundle/Archivo-Medium.ttf to /Users/ann/Library/Fonts/Archivo-Medium.ttf";
    for (const bool result : {false, true}) {
        for (const auto& error : {std::optional<Error>(), std::optional(Error{"odd"})}) {
            disk.remove(archivo);
            disk.outcomes[copied] = {.result = result, .error = error, .takesEffect = true};
            EXPECT_TRUE(controller.installFontList({"Archivo-Medium.ttf"}));
            expectEffects(
                "log: Copying: (file:///Bundle/Archivo-Medium.ttf) To: "
                "(file:///Users/ann/Library/Fonts/Archivo-Medium.ttf)\nfile: " +
                copied + "\n" + (error ? "log: Copy error:odd\n" : ""));
        }
    }
}

TEST_F(FontsTest, ACopyThatFailsWithoutErrorIsNoticedByTheVerification) {
    disk.outcomes
        ["copied /Bundle/Archivo-Medium.ttf to "
         "/Users/ann/Library/Fonts/Archivo-Medium.ttf"] = {};
    EXPECT_FALSE(controller.installFontList({"Archivo-Medium.ttf"}));
    EXPECT_EQ(journal.only({Kind::log}),
              lines({
                  "log: Copying: (file:///Bundle/Archivo-Medium.ttf) To: "
                  "(file:///Users/ann/Library/Fonts/Archivo-Medium.ttf)",
                  "log: Can't find font in the users' fonts library:nothing at "
                  "/Users/ann/Library/Fonts/Archivo-Medium.ttf",
              }));
}

TEST_F(FontsTest, AnEmptyListIsInstalled) {
    EXPECT_TRUE(controller.installFontList({}));
    expectEverything({});
}

TEST_F(FontsTest, ThatTheBundleLacksFailsAndTheNextIsInstalled) {
    bundles.main->resources.erase("Archivo-Medium.ttf");
    EXPECT_FALSE(controller.installFontList({"Archivo-Medium.ttf", "OpenSans-Regular.ttf"}));
    EXPECT_EQ(journal.only({Kind::file}), lines({"file: copied /Bundle/OpenSans-Regular.ttf to "
                                                 "/Users/ann/Library/Fonts/OpenSans-Regular.ttf"}));
}

TEST_F(FontsTest, GoIntoTheHomeFolderAndAreLoggedAsUrls) {
    folders.home = "/Users/J\xC3\xBCrg M";
    EXPECT_TRUE(controller.installFontList({"Archivo-Medium.ttf"}));
    expectEffects({
        "log: Copying: (file:///Bundle/Archivo-Medium.ttf) To: "
        "(file:///Users/J%C3%BCrg%20M/Library/Fonts/Archivo-Medium.ttf)",
        "file: copied /Bundle/Archivo-Medium.ttf to "
        "/Users/J\xC3\xBCrg M/Library/Fonts/Archivo-Medium.ttf",
    });
}

}  // namespace

}  // namespace morvella::tests
