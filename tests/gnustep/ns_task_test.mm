#include <dispatch/dispatch.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <vector>

#include "cocoa/temporary_folder.hpp"
#include "gnustep/texts.hpp"
#include "gnustep/turn.hpp"

namespace morvella::gnustep_tests {

namespace {

namespace fs = std::filesystem;

/// The exit status of a child, which is waited for.
int statusOf(NSString* launchPath, NSArray* arguments) {
    NSTask* task = [[[NSTask alloc] init] autorelease];
    [task setLaunchPath:launchPath];
    [task setArguments:arguments];
    [task launch];
    [task waitUntilExit];
    EXPECT_FALSE([task isRunning]);
    return [task terminationStatus];
}

/// A shell script in place of the archiver's stand-in, as long as it lives.
class StandIn {
  public:
    explicit StandIn(const std::string& script) {
        fs::create_directory(folder_);
        std::ofstream(folder_ / "ditto") << "#!/bin/sh\n" << script << "\n";
        fs::permissions(folder_ / "ditto", fs::perms::owner_all);
    }
    ~StandIn() { fs::remove_all(folder_); }

  private:
    fs::path folder_ = text([[NSBundle mainBundle] bundlePath]) + "/Helpers";
};

/// Whether nothing could be started.
bool raises(NSString* launchPath) {
    @try {
        statusOf(launchPath, @[]);
    } @catch (NSException* exception) {
        return true;
    }
    return false;
}

TEST(TaskTest, RunsTheStandInForTheArchiver) {
    EXPECT_TRUE(raises(@"/usr/bin/ditto"));
    const cocoa_tests::TemporaryFolder folder;
    const StandIn standIn("printf '%s|' \"$@\" >\"$1\"; exit 7");
    const std::string out = folder.at("out");
    EXPECT_EQ(statusOf(@"/usr/bin/ditto", @[ string(out), @"-x", @"a b %@" ]), 7);
    EXPECT_EQ(folder.contents("out"), out + "|-x|a b %@|");
}

TEST(TaskTest, RaisesWhenThereIsNothingToRun) {
    for (NSString* path in @[ @"/no such tool", @"/etc/passwd", @"/tmp" ]) {
        EXPECT_TRUE(raises(path)) << text(path);
    }
}

TEST(TaskTest, RaisesWhenItsDirectoryIsMissing) {
    const cocoa_tests::TemporaryFolder folder;
    NSTask* task = [[[NSTask alloc] init] autorelease];
    [task setLaunchPath:@"/bin/true"];
    [task setCurrentDirectoryPath:string(folder.at("missing"))];
    std::string reason;
    @try {
        [task launch];
    } @catch (NSException* exception) {
        reason = text([exception reason]);
    }
    EXPECT_TRUE(reason.starts_with("“/bin/true” could not be started: ")) << reason;
    EXPECT_NE(reason.find("No such file or directory"), std::string::npos) << reason;
    EXPECT_FALSE([task isRunning]);
}

TEST(TaskTest, WritesEachOutputWhereItIsToldTo) {
    NSPipe* outputs[] = {[NSPipe pipe], [NSPipe pipe]};
    NSTask* task = [[[NSTask alloc] init] autorelease];
    [task setLaunchPath:@"/bin/sh"];
    [task setArguments:@[ @"-c", @"echo out; echo error >&2" ]];
    [task setStandardOutput:outputs[0]];
    [task setStandardError:outputs[1]];
    [task launch];
    [task waitUntilExit];
    std::vector<std::string> read;
    for (NSPipe* output : outputs) {
        NSData* data = [[output fileHandleForReading] readDataToEndOfFile];
        read.emplace_back(static_cast<const char*>([data bytes]), [data length]);
    }
    EXPECT_EQ(read, (std::vector<std::string>{"out\n", "error\n"}));
}

TEST(TaskTest, WritesBothOutputsToOnePipe) {
    NSPipe* pipe = [NSPipe pipe];
    NSTask* task = [[[NSTask alloc] init] autorelease];
    [task setLaunchPath:@"/bin/sh"];
    [task setArguments:@[ @"-c", @"echo out; echo error >&2; ls -1 /proc/self/fd | wc -l" ]];
    [task setStandardOutput:pipe];
    [task setStandardError:pipe];
    [task launch];
    [task waitUntilExit];
    NSData* data = [[pipe fileHandleForReading] readDataToEndOfFile];
    // The fourth descriptor is the listed folder's own.
    EXPECT_EQ(std::string(static_cast<const char*>([data bytes]), [data length]),
              "out\nerror\n4\n");
}

TEST(TaskTest, RunsTheRunLoopWhileItWaits) {
    bool ran = false;
    bool* flag = &ran;
    dispatch_async(dispatch_get_main_queue(), ^{
        *flag = true;
    });
    EXPECT_EQ(statusOf(@"/bin/sh", @[ @"-c", @"sleep 0.3; exit 3" ]), 3);
    EXPECT_TRUE(ran);
}

TEST(TaskTest, GivesAChildTheSignalsThatItExpects) {
    // Of the signals that this process ignores, as a mask in hexadecimal digits.
    const std::string script = "read -r _ mask <<END\n$(grep SigIgn /proc/self/status)\nEND\n"
                               "exit $(( (0x$mask >> " +
                               std::to_string(SIGPIPE - 1) +
                               " & 1) | "
                               "(0x$mask >> " +
                               std::to_string(SIGXFSZ - 1) + " & 1) ))";
    EXPECT_EQ(statusOf(@"/bin/sh", @[ @"-c", string(script) ]), 0);
}

TEST(TaskTest, TellsTheSignalThatEndedAChild) {
    EXPECT_EQ(statusOf(@"/bin/sh", @[ @"-c", @"kill -TERM $$" ]), SIGTERM);
}

}  // namespace

}  // namespace morvella::gnustep_tests
