#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

#include "cocoa/temporary_folder.hpp"
#include "platform/cocoa/system.h"

namespace morvella::cocoa_tests {

namespace {

class TasksTest : public ::testing::Test {
  protected:
    /// Runs a line of shell; what follows are its arguments.
    TaskResult shell(const std::string& line, const std::vector<std::string>& arguments = {},
                     const std::optional<std::string>& currentDirectory = std::nullopt) {
        Command command{"/bin/sh", {"-c", line, "sh"}, currentDirectory};
        command.arguments.insert(command.arguments.end(), arguments.begin(), arguments.end());
        const auto result = tasks.run(command);
        EXPECT_TRUE(result.has_value());
        return result.value_or(TaskResult{});
    }

    CocoaTaskRunner tasks;
};

TEST_F(TasksTest, GivesTheExitStatus) {
    for (const int status : {0, 1, 7, 255}) {
        EXPECT_EQ(shell("exit " + std::to_string(status)).terminationStatus, status);
    }
}

TEST_F(TasksTest, GivesTheSignalThatEndedTheChild) {
    EXPECT_EQ(shell("kill -9 $$").terminationStatus, SIGKILL);
    EXPECT_EQ(shell("kill -15 $$").terminationStatus, SIGTERM);
}

TEST_F(TasksTest, GivesBothOutputsAsOneInTheirOrder) {
    const TaskResult result = shell("echo one; echo two >&2; echo three; exit 3");
    EXPECT_EQ(result.output, "one\ntwo\nthree\n");
    EXPECT_EQ(result.terminationStatus, 3);
}

TEST_F(TasksTest, GivesNoOutputForASilentChild) {
    EXPECT_EQ(shell("true").output, "");
}

TEST_F(TasksTest, GivesBytesAsTheyCome) {
    EXPECT_EQ(shell("printf '\\377\\0x'").output, std::string("\xFF\0x", 3));
}

TEST_F(TasksTest, HoldsWhatFitsInAPipe) {
    EXPECT_EQ(shell("head -c 60000 /dev/zero | tr '\\0' x").output, std::string(60000, 'x'));
}

TEST_F(TasksTest, HandsEveryArgumentOnUnchanged) {
    for (const std::string& name : difficultNames()) {
        EXPECT_EQ(shell("printf '%s|' \"$@\"", {name, "", name}).output, name + "||" + name + "|");
    }
}

TEST_F(TasksTest, RunsInItsDirectoryOrInTheInstallers) {
    const TemporaryFolder folder;
    for (const std::string& name : difficultNames()) {
        folder.addFolder(name);
        EXPECT_EQ(shell("printf %s \"$PWD\"", {}, folder.at(name)).output, folder.at(name));
    }
    EXPECT_EQ(shell("pwd -P").output, std::filesystem::current_path().string() + "\n");
}

TEST_F(TasksTest, StartsNothingThatWouldBeCutShortAtANul) {
    const std::string nul(1, '\0');
    const TemporaryFolder folder;
    EXPECT_FALSE(tasks.run({.launchPath = "/bin/sh" + nul}).has_value());
    EXPECT_FALSE(
        tasks.run({.launchPath = "/bin/sh", .arguments = {"-c", "true" + nul}}).has_value());
    EXPECT_FALSE(tasks
                     .run({.launchPath = "/bin/sh",
                           .arguments = {"-c", "true"},
                           .currentDirectoryPath = folder.path() + nul})
                     .has_value());
}

TEST_F(TasksTest, ReturnsNothingForWhatCannotBeStarted) {
    const TemporaryFolder folder;
    folder.addFile("not executable", "#!/bin/sh\n");
    EXPECT_FALSE(tasks.run({folder.at("missing"), {}, std::nullopt}).has_value());
    EXPECT_FALSE(tasks.run({folder.at("not executable"), {}, std::nullopt}).has_value());
}

}  // namespace

}  // namespace morvella::cocoa_tests
