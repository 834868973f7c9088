#include "app/license_document.hpp"

#include "app/product.hpp"

namespace morvella {

std::shared_ptr<AttributedString> loadLicenseDocument(const Platform& platform) {
    const std::optional<FileUrl> url =
        platform.bundles.mainBundle()->urlForResource(product::licenseDocument);
    return url ? platform.richText.attributedStringWithUrl(*url) : nullptr;
}

}  // namespace morvella
