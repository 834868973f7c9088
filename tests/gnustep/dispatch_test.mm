#import <AppKit/AppKit.h>
#include <dispatch/dispatch.h>
#include <gtest/gtest.h>

#include "gnustep/turn.hpp"

#include <memory>
#include <string>
#include <thread>

namespace morvella::gnustep_tests {

namespace {

/// What is on the stack here is gone when the block runs.
void addLater(std::string* out, const std::string& what) {
    const std::string copied = what + "!";
    dispatch_async(dispatch_get_main_queue(), ^{
        *out += copied;
    });
}

TEST(DispatchTest, CopiesABlockWithWhatItHolds) {
    std::string out;
    addLater(&out, "a text that is too long to be kept inside of a string itself");
    EXPECT_EQ(out, "");
    EXPECT_TRUE(turnUntil(NSDefaultRunLoopMode, [&] { return !out.empty(); }));
    EXPECT_EQ(out, "a text that is too long to be kept inside of a string itself!");
}

TEST(DispatchTest, RunsBlocksWhileAModalWindowOrTheMouseHasTheRunLoop) {
    for (NSString* mode in @[ NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ]) {
        std::string out;
        addLater(&out, "x");
        EXPECT_TRUE(turnUntil(mode, [&] { return !out.empty(); }));
    }
}

TEST(DispatchTest, RunsABlockThatABlockAddsAfterThoseThatWaitAlready) {
    std::string out;
    std::string* ran = &out;
    dispatch_async(dispatch_get_main_queue(), ^{
        *ran += "1";
        addLater(ran, "3");
    });
    addLater(ran, "2");
    EXPECT_TRUE(turnUntil(NSDefaultRunLoopMode, [&] { return out.size() == 5; }));
    EXPECT_EQ(out, "12!3!");
}

TEST(DispatchTest, TakesBlocksFromAnotherThreadToTheMainOne) {
    bool onMainThread = false;
    bool* ran = &onMainThread;
    std::thread other([ran] {
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        dispatch_async(dispatch_get_main_queue(), ^{
            *ran = [NSThread isMainThread];
        });
        [pool release];
    });
    EXPECT_TRUE(turnUntil(NSDefaultRunLoopMode, [&] { return onMainThread; }));
    other.join();
}

}  // namespace

}  // namespace morvella::gnustep_tests
