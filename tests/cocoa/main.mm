#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "cocoa/temporary_folder.hpp"

#include <cstdlib>

namespace {

/// Drains what a test autoreleases before the next one begins.
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

/// Has the platform set itself up: what it keeps from then on is not lost by a test.
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
        // The system looks only once where the home folder is, which holds the Trash.
        const morvella::cocoa_tests::TemporaryFolder home;
        setenv("HOME", home.path().c_str(), 1);
        // What a Mac looks at instead.
        setenv("CFFIXED_USER_HOME", home.path().c_str(), 1);
        prepareFoundation();
        result = RUN_ALL_TESTS();
    }
    [pool release];
    return result;
}
