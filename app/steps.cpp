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
    const auto shown =
        std::ranges::find_if(pages, [this](const auto& page) { return shows(page.second); });
    // What is shown before the first page belongs to the first step.
    const auto current = shown == pages.end() ? pages.begin() : shown;
    std::vector<Step> steps;
    for (auto page = pages.begin(); page != pages.end(); ++page) {
        const StepState other = page < current ? StepState::done : StepState::toCome;
        steps.push_back(stepOf(page->first, page == current ? StepState::current : other));
    }
    return steps;
}

}  // namespace morvella
