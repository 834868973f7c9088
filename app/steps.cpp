#include "app/steps.hpp"

#include <algorithm>
#include <array>

#include "app/morvella_installer_view_controller.hpp"

namespace morvella {

namespace {

Step stepOf(const std::string& name, StepState state) {
    switch (state) {
        case StepState::done:
            return {name, state, name + ", done"};
        case StepState::current:
            return {name, state, name + ", current step"};
        case StepState::toCome:
            return {name, state, name + ", not reached yet"};
    }
    return {name, state, name};
}

}  // namespace

std::vector<Step> MorvellaInstallerViewController::steps() const {
    const std::array<std::pair<const char*, std::shared_ptr<View>>, 5> pages = {{
        {"Welcome", welcomeView()},
        {"Licence", licenseView()},
        {"User Library", settingsView()},
        {"Installation", doInstallView()},
        {"Finish", postInstallView()},
    }};
    const auto isShown = [this](const auto& page) { return shows(page.second); };
    const auto shown = static_cast<size_t>(std::ranges::find_if(pages, isShown) - pages.begin());
    // Before the first page is shown, the first step is the current one.
    const size_t current = shown < pages.size() ? shown : 0;
    std::vector<Step> steps;
    for (size_t page = 0; page < pages.size(); ++page) {
        const StepState other = page < current ? StepState::done : StepState::toCome;
        steps.push_back(stepOf(pages[page].first, page == current ? StepState::current : other));
    }
    return steps;
}

}  // namespace morvella
