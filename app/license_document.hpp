#pragma once

#include <memory>

#include "platform/platform.hpp"

namespace morvella {

/// The licence agreement of the installer's bundle; null if it is missing or unreadable.
std::shared_ptr<AttributedString> loadLicenseDocument(const Platform& platform);

}  // namespace morvella
