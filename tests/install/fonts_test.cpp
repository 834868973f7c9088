#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

/// Installs two fonts of the tests' own, independent of the product's.
class FontsTest : public InstallerTest {
  protected:
    FontsTest() {
        for (const char* font : {"a.ttf", "b.ttf"}) {
            bundles.main->resources[font] = std::string("/Bundle/") + font;
            disk.addFile(std::string("/Bundle/") + font);
        }
        disk.addFolder("/Users/ann/Library/Fonts");
    }

    bool install() { return controller.installFontList({"a.ttf", "b.ttf"}); }

    const std::string a = "/Users/ann/Library/Fonts/a.ttf";
    const std::string b = "/Users/ann/Library/Fonts/b.ttf";
    const std::string copiesA = copiesFont("/Bundle/a.ttf", a);
    const std::string copiesB = copiesFont("/Bundle/b.ttf", b);
    const std::string copied = "copied /Bundle/a.ttf to " + a;
    const std::string missesA = logs("Can't find font in the users' fonts library:nothing at " + a);
};

TEST_F(FontsTest, AreCopiedOneAfterTheOther) {
    EXPECT_TRUE(install());
    expectEverything({
        "asked: path of resource a.ttf",
        "asked: reachable /Users/ann/Library/Fonts/a.ttf",
        "log: Copying: (file:///Bundle/a.ttf) To: (file:///Users/ann/Library/Fonts/a.ttf)",
        "file: copied /Bundle/a.ttf to /Users/ann/Library/Fonts/a.ttf",
        "asked: reachable /Users/ann/Library/Fonts/a.ttf, and why not",
        "asked: path of resource b.ttf",
        "asked: reachable /Users/ann/Library/Fonts/b.ttf",
        copiesB,
        "asked: reachable /Users/ann/Library/Fonts/b.ttf, and why not",
    });
}

TEST_F(FontsTest, AreVerifiedAndLeftAloneIfAlreadyInstalled) {
    disk.addFile(a, "another version");
    EXPECT_TRUE(install());
    expectEverything({
        "asked: path of resource a.ttf",
        "asked: reachable /Users/ann/Library/Fonts/a.ttf",
        "log: Font already installed:a.ttf",
        "asked: reachable /Users/ann/Library/Fonts/a.ttf, and why not",
        "asked: path of resource b.ttf",
        "asked: reachable /Users/ann/Library/Fonts/b.ttf",
        copiesB,
        "asked: reachable /Users/ann/Library/Fonts/b.ttf, and why not",
    });
    EXPECT_EQ(disk.items[a].contents, "another version");
}

TEST_F(FontsTest, AFailedCopyLogsTwiceAndTheNextFontIsInstalled) {
    refuse(copied, "no space");
    EXPECT_FALSE(install());
    expectEffects({copiesA, "log: Copy error:no space", missesA, copiesB});
    EXPECT_TRUE(disk.holds(b));
}

TEST_F(FontsTest, AFailureOfTheLastFontFailsTheList) {
    refuse("copied /Bundle/b.ttf to " + b, "no space");
    EXPECT_FALSE(install());
}

/// Only the error object decides whether an error is logged, and only the file decides the result.
TEST_F(FontsTest, ACopySucceedsIfTheFontExistsAfterwards) {
    for (const bool result : {false, true}) {
        disk.remove(a);
        disk.outcomes[copied] = {.result = result, .takesEffect = true};
        EXPECT_TRUE(controller.installFontList({"a.ttf"}));
        expectEffects({copiesA});
        disk.remove(a);
        disk.outcomes[copied].error = Error{"odd"};
        EXPECT_TRUE(controller.installFontList({"a.ttf"}));
        expectEffects({copiesA, "log: Copy error:odd"});
    }
}

TEST_F(FontsTest, VerificationDetectsACopyThatFailedWithoutAnError) {
    disk.outcomes[copied] = {};
    EXPECT_FALSE(controller.installFontList({"a.ttf"}));
    expectEffects({copiesA, missesA});
}

TEST_F(FontsTest, AFontMissingFromTheBundleFailsAndTheNextIsInstalled) {
    bundles.main->resources.erase("a.ttf");
    EXPECT_FALSE(install());
    expectEffects({missesA, copiesB});
}

TEST_F(FontsTest, AreCopiedIntoTheHomeFolderAndLoggedAsUrls) {
    folders.home = "/Users/J\xC3\xBCrg M";
    EXPECT_TRUE(controller.installFontList({"a.ttf"}));
    expectEffects({
        "log: Copying: (file:///Bundle/a.ttf) To: "
        "(file:///Users/J%C3%BCrg%20M/Library/Fonts/a.ttf)",
        "file: copied /Bundle/a.ttf to /Users/J\xC3\xBCrg M/Library/Fonts/a.ttf",
    });
}

}  // namespace

}  // namespace morvella::tests
