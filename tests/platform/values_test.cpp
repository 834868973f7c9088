#include <gtest/gtest.h>

#include <string_view>

#include "platform/alert.hpp"
#include "platform/files.hpp"
#include "platform/system.hpp"
#include "platform/user_defaults.hpp"

namespace morvella {

namespace {

/// The adapters pass these values to the platform unchanged.
TEST(PlatformValuesTest, MatchThePlatformsConstants) {
    EXPECT_EQ(static_cast<int>(AlertStyle::warning), 0);
    EXPECT_EQ(static_cast<int>(AlertStyle::informational), 1);
    EXPECT_EQ(static_cast<int>(AlertStyle::critical), 2);
    EXPECT_EQ(static_cast<int>(ControlState::mixed), -1);
    EXPECT_EQ(static_cast<int>(ControlState::off), 0);
    EXPECT_EQ(static_cast<int>(ControlState::on), 1);
    EXPECT_EQ(static_cast<int>(ProgressIndicatorStyle::bar), 0);
    EXPECT_EQ(static_cast<int>(ProgressIndicatorStyle::spinning), 1);
    EXPECT_EQ(static_cast<int>(StandardDirectory::applications), 1);
    EXPECT_EQ(static_cast<int>(StandardDirectory::users), 7);
    EXPECT_EQ(static_cast<int>(StandardDirectory::documents), 9);
    EXPECT_EQ(static_cast<int>(Domain::user), 1);
    EXPECT_EQ(static_cast<int>(Domain::local), 2);
    EXPECT_EQ(std::string_view(argumentDomain), "NSArgumentDomain");
}

TEST(PlatformValuesTest, HavePlainDefaults) {
    EXPECT_EQ(Alert{}.style, AlertStyle::warning);
    EXPECT_EQ(Alert{}.suppressionButton, std::nullopt);
    EXPECT_FALSE(Alert{}.showsHelp);
    EXPECT_EQ(SuppressionButton{}.state, ControlState::off);
    EXPECT_EQ(AlertAnswer{}.response, 0);
    EXPECT_EQ(AlertAnswer{}.suppressionState, ControlState::off);
    EXPECT_EQ(ProgressIndicatorSettings{},
              (ProgressIndicatorSettings{0, 0, 0, 0, ProgressIndicatorStyle::bar, false, false}));
    EXPECT_EQ(TaskResult{}.terminationStatus, 0);
}

}  // namespace

}  // namespace morvella
