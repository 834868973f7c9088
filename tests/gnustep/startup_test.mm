#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "cocoa/temporary_folder.hpp"

namespace morvella::gnustep_tests {

namespace {

/// Starts the application with these variables set, or unset if null; it must refuse to run. For
/// EXPECT_EXIT, since it never returns.
[[noreturn]] void start(const char* stage, const char* home) {
    stage ? setenv("MORVELLA_STAGE", stage, 1) : unsetenv("MORVELLA_STAGE");
    home ? setenv("HOME", home, 1) : unsetenv("HOME");
    NSApplicationMain(0, nullptr);
    _exit(0);
}

TEST(StartupTest, ExitsWithoutAStage) {
    for (const char* stage : {static_cast<const char*>(nullptr), "", "relative"}) {
        EXPECT_EXIT(start(stage, "/"), ::testing::ExitedWithCode(2), "^MORVELLA_STAGE must");
    }
}

TEST(StartupTest, ExitsWithoutAHomeInsideItsStage) {
    const cocoa_tests::TemporaryFolder folder;
    folder.addFolder("stage/home");
    folder.addFolder("stage2");
    ASSERT_EQ(symlink(folder.at("stage2").c_str(), folder.at("stage/link").c_str()), 0);
    const std::string stage = folder.at("stage");
    EXPECT_EXIT(start(stage.c_str(), nullptr), ::testing::ExitedWithCode(2), "^HOME must");
    for (const std::string& home :
         {std::string(), std::string("home"), folder.at("stage2"), folder.at("stage/../stage2"),
          folder.at("stage/link"), folder.at("stage/missing/../../other")}) {
        EXPECT_EXIT(start(stage.c_str(), home.c_str()), ::testing::ExitedWithCode(2), "^HOME must")
            << home;
    }
}

TEST(StartupTest, ExitsWithoutAnIntactInterfaceFile) {
    const cocoa_tests::TemporaryFolder folder;
    const std::filesystem::path resources =
        std::string([[[NSBundle mainBundle] bundlePath] UTF8String]) + "/Resources";
    const auto expectRefusal = [&] {
        EXPECT_EXIT(start(folder.path().c_str(), folder.path().c_str()),
                    ::testing::ExitedWithCode(2), "interface file is missing or damaged");
    };
    expectRefusal();
    std::filesystem::create_directories(resources);
    std::ofstream(resources / "MainMenu.xib") << "<document><objects></document>";
    expectRefusal();
    std::filesystem::remove_all(resources);
}

TEST(StartupTest, ExitsIfAnArgumentIsNotUtf8) {
    const auto execute = [] {
        execl("/proc/self/exe", "gnustep_tests", "a\xFF", nullptr);
        _exit(126);
    };
    EXPECT_EXIT(execute(), ::testing::ExitedWithCode(2), "must be UTF-8");
}

TEST(StartupTest, TreatsAnExceededFileSizeLimitAsAnError) {
    const auto writeBeyondLimit = [] {
        const rlimit limit = {4000, 4000};
        setrlimit(RLIMIT_FSIZE, &limit);
        const cocoa_tests::TemporaryFolder folder;
        const bool written =
            bool(std::ofstream(folder.at("file")) << std::string(10000, 'x') << std::flush);
        std::filesystem::remove_all(folder.path());
        _exit(written ? 1 : 0);
    };
    EXPECT_EXIT(writeBeyondLimit(), ::testing::ExitedWithCode(0), "");
}

}  // namespace

}  // namespace morvella::gnustep_tests
