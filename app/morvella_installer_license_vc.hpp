#pragma once

#include <memory>

#include "app/property.hpp"
#include "platform/platform.hpp"

namespace morvella {

/// Shows the licence agreement in its own text view. Main thread only. MainMenu.xib creates one for
/// the licence page, although the main controller also fills that page's text view.
class MorvellaInstallerLicenseVC {
  public:
    explicit MorvellaInstallerLicenseVC(const Platform& platform) : platform_(platform) {}

    /// Connected by the interface file before `viewDidLoad`.
    MORVELLA_PROPERTY(TextView, licenseView, setLicenseView)
    /// Never set by the installer: the document goes only into the text view.
    MORVELLA_PROPERTY(AttributedString, licenseText, setLicenseText)

    /// Fills the text view; a document that cannot be read leaves it empty.
    void viewDidLoad();

  private:
    Platform platform_;
};

}  // namespace morvella
