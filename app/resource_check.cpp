#include "app/morvella_installer_view_controller.hpp"
#include "app/product.hpp"

namespace morvella {

bool MorvellaInstallerViewController::checkAndLoadResources() {
    const std::shared_ptr<const Bundle> bundle = platform_.bundles.mainBundle();
    const std::shared_ptr<AttributedString> license =
        bundle->attributedStringForResource(product::licenseDocument);
    if (!license) {
        return false;
    }
    licenseText()->setAttributedString(license);

    std::vector<std::string> resources(product::fonts.begin(), product::fonts.end());
    resources.emplace_back(product::suiteArchive);
    for (const std::string& resource : resources) {
        const std::optional<std::string> path = bundle->pathForResource(resource);
        if (!path || !platform_.files.isReachable(*path)) {
            platform_.log("resource not found:%@", resource);
            return false;
        }
    }

    enableOpenDemoSetUI(setDemoSetURLFromArgs() && platform_.files.isReachable(*demoSetPath()));
    welcomeVersionString()->setTitle(std::string("Morvella ") + product::version);
    return true;
}

}  // namespace morvella
