#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

#include "cocoa/temporary_folder.hpp"
#include "platform/cocoa/system.h"

namespace morvella::cocoa_tests {

namespace {

/// Runs `line` in a shell with `arguments` as its positional parameters.
TaskResult shell(const std::string& line, const std::vector<std::string>& arguments = {},
                 const std::optional<std::string>& currentDirectory = std::nullopt) {
    Command command{"/bin/sh", {"-c", line, "sh"}, currentDirectory};
    command.arguments.insert(command.arguments.end(), arguments.begin(), arguments.end());
    const auto result = CocoaTaskRunner().run(command);
    EXPECT_TRUE(result.has_value());
    return result.value_or(TaskResult{});
}

TEST(TasksTest, ReportHowTheChildEnded) {
    for (const int status : {0, 1, 255}) {
        EXPECT_EQ(shell("exit " + std::to_string(status)).terminationStatus, status);
    }
    EXPECT_EQ(shell("kill -9 $$").terminationStatus, SIGKILL);
    EXPECT_EQ(shell("kill -15 $$").terminationStatus, SIGTERM);
}

TEST(TasksTest, CollectBothOutputsInOrderByteForByte) {
    EXPECT_EQ(shell("true").output, "");
    EXPECT_EQ(shell("echo one; echo two >&2; printf '\\377\\0x'").output,
              std::string("one\ntwo\n\xFF\0x", 11));
    EXPECT_EQ(shell("head -c 60000 /dev/zero | tr '\\0' x").output, std::string(60000, 'x'));
}

TEST(TasksTest, PassEveryArgumentUnchanged) {
    for (const std::string& name : difficultNames()) {
        EXPECT_EQ(shell("printf '%s|' \"$@\"", {name, "", name}).output, name + "||" + name + "|");
    }
}

TEST(TasksTest, RunInTheirDirectoryOrInTheInstallers) {
    const TemporaryFolder folder;
    for (const std::string& name : difficultNames()) {
        folder.addFolder(name);
        EXPECT_EQ(shell("printf %s \"$PWD\"", {}, folder.at(name)).output, folder.at(name));
    }
    EXPECT_EQ(shell("pwd -P").output, std::filesystem::current_path().string() + "\n");
}

TEST(TasksTest, ReturnNothingIfTheyCannotBeStarted) {
    const TemporaryFolder folder;
    folder.addFile("not executable", "#!/bin/sh\n");
    const std::string nul(1, '\0');
    const std::vector<std::string> succeed = {"-c", "true"};
    for (const Command& command : {Command{folder.at("missing"), {}, std::nullopt},
                                   Command{folder.at("not executable"), {}, std::nullopt},
                                   Command{"/bin/sh", succeed, folder.at("missing")},
                                   // Foundation would truncate these at the NUL.
                                   Command{"/bin/sh" + nul, succeed, std::nullopt},
                                   Command{"/bin/sh", {"-c", "true" + nul}, std::nullopt},
                                   Command{"/bin/sh", succeed, folder.path() + nul}}) {
        EXPECT_FALSE(CocoaTaskRunner().run(command)) << command.launchPath;
    }
}

}  // namespace

}  // namespace morvella::cocoa_tests
