#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <string>

#include "platform/cocoa/log.h"

namespace morvella::cocoa_tests {

namespace {

/// A child process whose standard error is a pipe.
class LogTest : public ::testing::Test {
  protected:
    static constexpr int lines = 20;
    static constexpr size_t length = 20000;  // Together they are more than a pipe holds.

    void startLogging() {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        child_ = fork();
        if (child_ == 0) {
            std::signal(SIGPIPE, SIG_DFL);  // GNUstep ignores it, unlike macOS.
            dup2(ends[1], STDERR_FILENO);
            close(ends[0]);
            close(ends[1]);
            for (int line = 0; line < lines; ++line) {
                CocoaLog()("line %@ %@", std::to_string(line), std::string(length, 'x'));
            }
            std::exit(0);
        }
        close(ends[1]);
        reader_ = ends[0];
    }

    void closeReader() {
        close(reader_);
        reader_ = -1;
    }

    /// What the child wrote, read with `pause` microseconds before each piece.
    std::string readAll(useconds_t pause) {
        std::string text;
        char piece[4096];
        for (ssize_t size = 0; (size = read(reader_, piece, sizeof piece)) > 0;) {
            text.append(piece, static_cast<size_t>(size));
            usleep(pause);
        }
        return text;
    }

    /// Whether the child ends by itself within ten seconds.
    bool ends() {
        for (int i = 0; i < 1000; ++i) {
            if (waitpid(child_, &status_, WNOHANG) == child_) {
                return WIFEXITED(status_);
            }
            usleep(10000);
        }
        kill(child_, SIGKILL);
        waitpid(child_, &status_, 0);
        return false;
    }

    ~LogTest() override { close(reader_); }

  private:
    pid_t child_ = 0;
    int reader_ = -1;
    int status_ = 0;
};

void expectEveryLine(const std::string& text, int lines) {
    size_t at = 0;
    for (int line = 0; line < lines && at != std::string::npos; ++line) {
        at = text.find("] line " + std::to_string(line) + " x", at);
        EXPECT_NE(at, std::string::npos) << line;
    }
    EXPECT_GE(std::count(text.begin(), text.end(), 'x'), lines * 20000);
}

TEST_F(LogTest, AReaderGetsEveryLine) {
    startLogging();
    expectEveryLine(readAll(0), lines);
    EXPECT_TRUE(ends());
}

TEST_F(LogTest, ASlowReaderGetsEveryLine) {
    startLogging();
    expectEveryLine(readAll(5000), lines);
    EXPECT_TRUE(ends());
}

TEST_F(LogTest, AReaderThatHasEndedDoesNotEndTheInstaller) {
    startLogging();
    closeReader();
    EXPECT_TRUE(ends());
}

TEST_F(LogTest, AReaderThatNeverReadsDoesNotStopTheInstaller) {
    startLogging();
    EXPECT_TRUE(ends());
}

}  // namespace

}  // namespace morvella::cocoa_tests
