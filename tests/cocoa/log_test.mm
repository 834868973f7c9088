#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <regex>
#include <string>

#include "cocoa/temporary_folder.hpp"
#include "platform/cocoa/log.h"

namespace morvella::cocoa_tests {

namespace {

constexpr int lines = 50;
constexpr size_t length = 28000;  // A pipe holds no more than two such lines.

/// Logs in a child process.
class LogTest : public ::testing::Test {
  protected:
    LogTest() { EXPECT_EQ(pipe(ends_), 0); }

    ~LogTest() override { closeReader(); }

    /// Forks a child that logs the lines with `output` as its standard error. SIGPIPE must still
    /// kill the child's own children.
    void startLogging(int output) {
        child_ = fork();
        if (child_ == 0) {
            // GNUstep ignores SIGPIPE, macOS does not. The log may have set a handler: keep it.
            if (const auto handler = std::signal(SIGPIPE, SIG_DFL); handler != SIG_IGN) {
                std::signal(SIGPIPE, handler);
            }
            // A time zone in which it is half past three in the afternoon.
            const NSInteger offset =
                55800 - NSInteger([[NSDate date] timeIntervalSince1970]) % 86400;
            [NSTimeZone setDefaultTimeZone:[NSTimeZone timeZoneForSecondsFromGMT:offset]];
            dup2(output, STDERR_FILENO);
            close(reader_);
            close(writer_);
            for (int line = 0; line < lines; ++line) {
                CocoaLog()("line %@ %@", std::to_string(line), std::string(length, 'x'));
            }
            const int status = std::system("kill -PIPE $$");
            std::exit(WIFSIGNALED(status) ? 0 : 1);
        }
        close(writer_);
    }

    void closeReader() {
        close(reader_);
        reader_ = -1;
    }

    /// Reads what the child writes to the pipe, more slowly than the child writes.
    std::string readAll() {
        std::string text;
        char piece[4096];
        for (ssize_t size = 0; (size = read(reader_, piece, sizeof piece)) > 0;) {
            text.append(piece, static_cast<size_t>(size));
            usleep(2000);
        }
        return text;
    }

    /// Expects the child to exit successfully within ten seconds.
    void expectExit() {
        int status = 0;
        for (int i = 0; i < 1000; ++i) {
            if (waitpid(child_, &status, WNOHANG) == child_) {
                EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
                return;
            }
            usleep(10000);
        }
        kill(child_, SIGKILL);
        waitpid(child_, &status, 0);
        ADD_FAILURE() << "the child has not exited";
    }

    int ends_[2];
    int& reader_ = ends_[0];
    int& writer_ = ends_[1];

  private:
    pid_t child_ = 0;
};

/// Expects every line, in order and in NSLog's format: time, program and process come first.
void expectEveryLine(const std::string& text, const std::string& hour = R"(\d\d)") {
    const std::regex head(R"(\d{4}-\d\d-\d\d )" + hour +
                          R"(:\d\d:\d\d\.\d{3} \w+\[\d+:\d+\] line (\d+) )");
    size_t at = 0;
    for (int line = 0; line < lines; ++line) {
        const std::string begin = text.substr(at, 80);
        std::smatch found;
        ASSERT_TRUE(std::regex_search(begin, found, head, std::regex_constants::match_continuous))
            << line << ": " << begin;
        EXPECT_EQ(found[1], std::to_string(line));
        at += found[0].length();
        ASSERT_EQ(text.substr(at, length + 1), std::string(length, 'x') + "\n") << line;
        at += length + 1;
    }
}

TEST_F(LogTest, AFileGetsEveryLine) {
    const TemporaryFolder folder;
    startLogging(open(folder.at("log").c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
    expectExit();
    expectEveryLine(folder.contents("log"));
}

TEST_F(LogTest, ASlowReaderGetsEveryLine) {
    startLogging(writer_);
    expectEveryLine(readAll(), "15");
    expectExit();
}

TEST_F(LogTest, AReaderThatPausesGetsTheRestAtTheEnd) {
    startLogging(writer_);
    usleep(300000);  // Longer than the log waits for a reader that has stalled.
    expectEveryLine(readAll());
    expectExit();
}

TEST_F(LogTest, ContinuesIfItsReaderHasExited) {
    startLogging(writer_);
    closeReader();
    expectExit();
}

TEST_F(LogTest, ContinuesIfItsReaderNeverReads) {
    startLogging(writer_);
    expectExit();
    closeReader();
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends_), 0);
    startLogging(writer_);
    expectExit();
}

}  // namespace

}  // namespace morvella::cocoa_tests
