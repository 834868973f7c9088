#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "cocoa/temporary_folder.hpp"

#include <cstdlib>
#include <filesystem>

namespace {

/// Gives each test an autorelease pool, which it drains before the next test begins.
class PoolForEachTest : public ::testing::EmptyTestEventListener {
    NSAutoreleasePool* _pool = nil;

    void OnTestStart(const ::testing::TestInfo&) override {
        _pool = [[NSAutoreleasePool alloc] init];
    }
    void OnTestEnd(const ::testing::TestInfo&) override {
        [_pool release];
        _pool = nil;
    }
};

}  // namespace

/// Allocates what Foundation keeps until the process ends, so that no test seems to leak it.
extern "C" void prepareFoundation() {
    [NSUserDefaults standardUserDefaults];
    [NSPipe pipe];
}

int main(int argc, char** argv) {
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::UnitTest::GetInstance()->listeners().Append(new PoolForEachTest);
    int result = 0;
    {
        // The system looks up the home folder, which holds the Trash, only once.
        const morvella::cocoa_tests::TemporaryFolder home;
        // So that a path left empty by mistake does not refer to the source tree.
        std::filesystem::current_path(home.path());
        setenv("HOME", home.path().c_str(), 1);
        // macOS reads this variable instead.
        setenv("CFFIXED_USER_HOME", home.path().c_str(), 1);
        prepareFoundation();
        result = RUN_ALL_TESTS();
    }
    [pool release];
    return result;
}
