#include "app/morvella_installer_license_vc.hpp"

#include "app/product.hpp"

namespace morvella {

void MorvellaInstallerLicenseVC::viewDidLoad() {
    licenseView()->setAttributedString(
        platform_.bundles.mainBundle()->attributedStringForResource(product::licenseDocument));
}

}  // namespace morvella
