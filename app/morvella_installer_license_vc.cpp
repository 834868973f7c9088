#include "app/morvella_installer_license_vc.hpp"

#include "app/license_document.hpp"

namespace morvella {

void MorvellaInstallerLicenseVC::viewDidLoad() {
    licenseView()->setAttributedString(loadLicenseDocument(platform_));
}

}  // namespace morvella
