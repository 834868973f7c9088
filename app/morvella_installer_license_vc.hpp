#pragma once

#include <memory>

#include "app/property.hpp"
#include "platform/platform.hpp"

namespace morvella {

/// Shows the licence agreement in a text view of its own. Main thread only. The main controller
/// fills its own outlet to the text view before the first page is shown; this one serves an
/// interface file that gives the licence page a controller.
class MorvellaInstallerLicenseVC {
  public:
    explicit MorvellaInstallerLicenseVC(const Platform& platform) : platform_(platform) {}

    /// Connected by the interface file before `viewDidLoad`.
    MORVELLA_PROPERTY(TextView, licenseView, setLicenseView)
    /// Not written by the installer: the document goes into the text view only.
    MORVELLA_PROPERTY(AttributedString, licenseText, setLicenseText)

    /// Fills the text view; a document that cannot be read leaves it empty.
    void viewDidLoad();

  private:
    Platform platform_;
};

}  // namespace morvella
