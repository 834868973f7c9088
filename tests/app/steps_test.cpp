#include "app/steps.hpp"

#include "support/installer_test.hpp"

namespace morvella::tests {

void PrintTo(const Step& step, std::ostream* out) {
    *out << step.name << " " << static_cast<int>(step.state) << " \"" << step.spokenLabel << "\"";
}

namespace {

class StepsTest : public InstallerTest {
  protected:
    /// The steps' states, one letter each: done, current, to come.
    std::string statesOn(const std::shared_ptr<View>& page) {
        viewController.shown = page;
        std::string states;
        for (const Step& step : controller.steps()) {
            states += "dct"[static_cast<int>(step.state)];
        }
        return states;
    }
};

TEST(StepTest, IsToComeByDefault) {
    EXPECT_EQ(Step().state, StepState::toCome);
}

TEST_F(StepsTest, HaveSpokenLabelsWithTheirState) {
    viewController.shown = settingsView;
    const std::vector<Step> expected = {
        {"Welcome", StepState::done, "Welcome, done"},
        {"Licence", StepState::done, "Licence, done"},
        {"User Library", StepState::current, "User Library, current step"},
        {"Installation", StepState::toCome, "Installation, not reached yet"},
        {"Finish", StepState::toCome, "Finish, not reached yet"},
    };
    EXPECT_EQ(controller.steps(), expected);
}

TEST_F(StepsTest, FollowThePages) {
    EXPECT_EQ(statesOn(welcomeView), "ctttt");
    EXPECT_EQ(statesOn(licenseView), "dcttt");
    EXPECT_EQ(statesOn(settingsView), "ddctt");
    EXPECT_EQ(statesOn(doInstallView), "dddct");
    EXPECT_EQ(statesOn(postInstallView), "ddddc");
}

TEST_F(StepsTest, BeginAtTheFirstUntilAPageIsShown) {
    EXPECT_EQ(statesOn(initialView), "ctttt");
    EXPECT_EQ(statesOn(makeView("stranger")), "ctttt");
}

}  // namespace

}  // namespace morvella::tests
