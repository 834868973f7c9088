#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "cocoa/temporary_folder.hpp"
#include "gnustep/texts.hpp"

namespace morvella::gnustep_tests {

namespace {

/// An environment variable with another value, as long as this lives.
class EnvironmentVariable {
  public:
    EnvironmentVariable(const char* name, const std::string& value) : name_(name) {
        if (const char* before = std::getenv(name)) {
            before_ = before;
        }
        setenv(name, value.c_str(), 1);
    }
    ~EnvironmentVariable() { before_ ? setenv(name_, before_->c_str(), 1) : unsetenv(name_); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

  private:
    const char* name_;
    std::optional<std::string> before_;
};

TEST(StartupTest, EndsWithoutAStage) {
    for (const char* stage : {"", "relative"}) {
        setenv("MORVELLA_STAGE", stage, 1);
        EXPECT_EXIT(NSApplicationMain(0, nullptr), ::testing::ExitedWithCode(2), "MORVELLA_STAGE");
    }
    unsetenv("MORVELLA_STAGE");
    EXPECT_EXIT(NSApplicationMain(0, nullptr), ::testing::ExitedWithCode(2), "MORVELLA_STAGE");
}

TEST(StartupTest, EndsWithoutAHomeInsideItsStage) {
    const cocoa_tests::TemporaryFolder folder;
    folder.addFolder("stage/home");
    folder.addFolder("stage2");
    ASSERT_EQ(symlink(folder.at("stage2").c_str(), folder.at("stage/link").c_str()), 0);
    const EnvironmentVariable stage("MORVELLA_STAGE", folder.at("stage"));
    const EnvironmentVariable home("HOME", "");
    for (const std::string& elsewhere :
         {std::string(), std::string("home"), folder.at("stage2"), folder.at("stage/../stage2"),
          folder.at("stage/link"), folder.at("stage/missing/../../other")}) {
        setenv("HOME", elsewhere.c_str(), 1);
        EXPECT_EXIT(NSApplicationMain(0, nullptr), ::testing::ExitedWithCode(2),
                    "^HOME must name a folder inside MORVELLA_STAGE.\n$")
            << elsewhere;
    }
    unsetenv("HOME");
    EXPECT_EXIT(NSApplicationMain(0, nullptr), ::testing::ExitedWithCode(2), "^HOME must");
}

TEST(StartupTest, EndsWithoutAWholeInterfaceFile) {
    const cocoa_tests::TemporaryFolder folder;
    const EnvironmentVariable stage("MORVELLA_STAGE", folder.path());
    const EnvironmentVariable home("HOME", folder.path());
    const std::filesystem::path resources = text([[NSBundle mainBundle] bundlePath]) + "/Resources";
    const auto expectRefusal = [](const std::string& what) {
        EXPECT_EXIT(NSApplicationMain(0, nullptr), ::testing::ExitedWithCode(2),
                    "The installer's interface file is missing or damaged.\n$")
            << what;
    };
    expectRefusal("missing");
    std::filesystem::create_directories(resources / "MainMenu.xib");
    expectRefusal("a folder");
    std::filesystem::remove(resources / "MainMenu.xib");
    for (const char* damaged : {"", "<document>", "<document><objects></document>"}) {
        std::ofstream(resources / "MainMenu.xib") << damaged;
        expectRefusal(damaged);
    }
    std::filesystem::remove_all(resources);
}

/// Starts this program anew with one argument.
[[noreturn]] void executeWith(const char* argument) {
    execl("/proc/self/exe", "gnustep_tests", argument, nullptr);
    _exit(126);
}

TEST(StartupTest, EndsWithTextsThatAreNotUtf8) {
    const char* sentence = "^The environment and the arguments must be UTF-8.\n$";
    EXPECT_EXIT(executeWith("a\xFF"), ::testing::ExitedWithCode(2), sentence);
    const EnvironmentVariable variable("MORVELLA_TEST", "\xC3");
    EXPECT_EXIT(executeWith("--help"), ::testing::ExitedWithCode(2), sentence);
}

TEST(StartupTest, TakesAFileSizeLimitForAnError) {
    const cocoa_tests::TemporaryFolder folder;
    folder.addFile("source", std::string(10000, 'x'));
    const auto copyWithinLimit = [&] {
        const rlimit limit = {4000, 4000};
        setrlimit(RLIMIT_FSIZE, &limit);
        NSError* error = nil;
        const BOOL copied =
            [[NSFileManager defaultManager] copyItemAtURL:fileUrl(folder.at("source"))
                                                    toURL:fileUrl(folder.at("copy"))
                                                    error:&error];
        const bool partLeft = access(folder.at("copy").c_str(), F_OK) == 0;
        _exit(copied || partLeft || !error ? 1 : 0);
    };
    EXPECT_EXIT(copyWithinLimit(), ::testing::ExitedWithCode(0), "");
}

TEST(StartupTest, KeepsNoSettingsInAnyHome) {
    EXPECT_EQ(text(GSDefaultsRootForUser(NSUserName())), "/dev/null");
    NSArray* libraries =
        NSSearchPathForDirectoriesInDomains(NSLibraryDirectory, NSUserDomainMask, YES);
    EXPECT_EQ(text([libraries objectAtIndex:0]), "/dev/null");
}

TEST(StartupTest, HasTheHomeThatIsSet) {
    EXPECT_EQ(text(NSHomeDirectory()), std::getenv("HOME"));
    EXPECT_EQ(text([@"~/x" stringByExpandingTildeInPath]), std::getenv("HOME") + std::string("/x"));
}

TEST(StartupTest, TakesABackslashForALetter) {
    EXPECT_EQ(text([@"/a\\b/c\\d" lastPathComponent]), "c\\d");
    EXPECT_EQ(text([@"/a" stringByAppendingPathComponent:@"C:\\b"]), "/a/C:\\b");
}

TEST(StartupTest, TellsTheEnvironmentAsItIs) {
    setenv("MORVELLA_TEST", "a=ü", 1);
    EXPECT_EQ(text([[[NSProcessInfo processInfo] environment] objectForKey:@"MORVELLA_TEST"]),
              "a=ü");
    unsetenv("MORVELLA_TEST");
    EXPECT_EQ([[[NSProcessInfo processInfo] environment] objectForKey:@"MORVELLA_TEST"], nil);
}

}  // namespace

}  // namespace morvella::gnustep_tests
