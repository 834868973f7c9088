#pragma once

#include <memory>

#include "app/property.hpp"
#include "platform/platform.hpp"

namespace morvella {

/// Shows the licence agreement in a text view of its own. Main thread only.
class MorvellaInstallerLicenseVC {
  public:
    explicit MorvellaInstallerLicenseVC(const Platform& platform) : platform_(platform) {}

    /// Connected by the interface file before `viewDidLoad`.
    [[nodiscard]] std::shared_ptr<TextView> licenseView() const { return licenseView_.get(); }
    void setLicenseView(std::shared_ptr<TextView> view) { licenseView_.set(std::move(view)); }

    /// Not written by the installer: the document goes into the text view only.
    [[nodiscard]] std::shared_ptr<AttributedString> licenseText() const {
        return licenseText_.get();
    }
    void setLicenseText(std::shared_ptr<AttributedString> text) {
        licenseText_.set(std::move(text));
    }

    /// Fills the text view; a document that cannot be read leaves it empty.
    void viewDidLoad();

  private:
    Platform platform_;
    Property<TextView> licenseView_;
    Property<AttributedString> licenseText_;
};

}  // namespace morvella
