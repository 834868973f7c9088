#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "cocoa/temporary_folder.hpp"
#include "gnustep/texts.hpp"
#include "gnustep/turn.hpp"

namespace morvella::gnustep_tests {

namespace {

class WorkspaceTest : public ::testing::Test {
  protected:
    void addApplication(const std::string& path, const std::string& script) {
        folder.addFile(path, "#!/bin/sh\n" + script + "\n");
        chmod(folder.at(path).c_str(), 0755);
    }

    bool open(const std::string& document, const std::string& application) {
        return [[NSWorkspace sharedWorkspace] openFile:string(folder.at(document))
                                       withApplication:string(folder.at(application))];
    }

    /// What the application writes; waits for a whole line.
    std::string written(const std::string& path) {
        const auto wholeLine = [&] { return folder.contents(path).ends_with("\n"); };
        EXPECT_TRUE(turnUntil(NSDefaultRunLoopMode, wholeLine));
        return folder.contents(path);
    }

    cocoa_tests::TemporaryFolder folder;
};

TEST_F(WorkspaceTest, StartsAnExecutableWithTheDocument) {
    addApplication("Live", "printf '%s\\n' \"$#:$1\" >'" + folder.at("out") + "'");
    folder.addFile("demo %@ \"q\".als");
    EXPECT_TRUE(open("demo %@ \"q\".als", "Live"));
    EXPECT_EQ(written("out"), "1:" + folder.at("demo %@ \"q\".als") + "\n");
}

TEST_F(WorkspaceTest, StartsTheExecutableOfABundle) {
    addApplication("Live.app/Contents/MacOS/Live", "echo started >'" + folder.at("out") + "'");
    folder.addFile("Live.app/Contents/Info.plist",
                   "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>"
                   "<key>CFBundleExecutable</key><string>Live</string></dict></plist>");
    folder.addFile("demo.als");
    EXPECT_TRUE(open("demo.als", "Live.app"));
    EXPECT_EQ(written("out"), "started\n");
}

TEST_F(WorkspaceTest, LeavesTheApplicationToItself) {
    // The sixth field is the session.
    addApplication("Live", "readlink /proc/$$/fd/2 >'" + folder.at("error") +
                               "'; cut -d ' ' -f 6 /proc/$$/stat >'" + folder.at("session") + "'");
    folder.addFile("demo.als");
    EXPECT_TRUE(open("demo.als", "Live"));
    EXPECT_EQ(written("error"), "/dev/null\n");
    EXPECT_NE(std::stoi(written("session")), getsid(0));
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(WorkspaceTest, TellsNobodyElseWhatIsLaunched) {
    EXPECT_EQ([[NSWorkspace sharedWorkspace] notificationCenter],
              [NSNotificationCenter defaultCenter]);
}

TEST_F(WorkspaceTest, SaysWhenNothingWasStarted) {
    addApplication("Live", "exit 0");
    folder.addFile("not executable");
    folder.addFolder("Empty.app/Contents");
    folder.addFile("demo.als");
    EXPECT_FALSE(open("missing.als", "Live"));
    EXPECT_FALSE(open("demo.als", "missing"));
    EXPECT_FALSE(open("demo.als", "not executable"));
    EXPECT_FALSE(open("demo.als", "Empty.app"));
}

}  // namespace

}  // namespace morvella::gnustep_tests
