#include "platform/log.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "support/fake_system.hpp"

namespace morvella {

namespace {

TEST(LogTest, ReplacesPlaceholdersWithTheArguments) {
    EXPECT_EQ(formatLogLine("Installing %@ to %@...", {"a", "b"}), "Installing a to b...");
    EXPECT_EQ(formatLogLine("%@", {"a"}), "a");
    EXPECT_EQ(formatLogLine("status:%u", {"4"}), "status:4");
    EXPECT_EQ(formatLogLine("%@%u%@", {"a", "1", "b"}), "a1b");
    EXPECT_EQ(formatLogLine("x%@", {""}), "x");
}

TEST(LogTest, KeepsTheRestOfTheText) {
    EXPECT_EQ(formatLogLine("", {}), "");
    EXPECT_EQ(formatLogLine("unknown state reached.", {}), "unknown state reached.");
    EXPECT_EQ(formatLogLine("100%", {"a"}), "100%");
    EXPECT_EQ(formatLogLine("%d %s %% %", {"a"}), "%d %s %% %");
    EXPECT_EQ(formatLogLine("%%@", {"a"}), "%a");
    EXPECT_EQ(formatLogLine("%@ %@ %u", {"a"}), "a %@ %u");
}

TEST(LogTest, NeverInterpretsAnArgument) {
    EXPECT_EQ(formatLogLine("%@ and %@", {"%@", "%u%n%s"}), "%@ and %u%n%s");
    EXPECT_EQ(formatLogLine("%@", {"100% of %@"}), "100% of %@");
}

TEST(LogTest, FormatsEachTypeOfArgument) {
    EXPECT_EQ(logText(std::string_view("a b")), "a b");
    EXPECT_EQ(logText(uint32_t{0}), "0");
    EXPECT_EQ(logText(std::numeric_limits<uint32_t>::max()), "4294967295");
    EXPECT_EQ(logText(FileUrl::directory("/a b")), "file:///a%20b/");
    EXPECT_EQ(logText(std::optional<Error>(Error{"no space"})), "no space");
    EXPECT_EQ(logText(std::optional<Error>()), "(null)");
}

TEST(LogTest, WritesOneLineForEachCall) {
    tests::Journal journal;
    tests::FakeLog log(journal);
    log("plain");
    log("%@, %u, %@, %@", "text", uint32_t{7}, FileUrl::file("/x"),
        std::optional<Error>(Error{"why"}));
    log("%@", std::string("two\nlines"));
    EXPECT_EQ(journal.everything(), "log: plain\nlog: text, 7, file:///x, why\nlog: two\nlines\n");
}

}  // namespace

}  // namespace morvella
