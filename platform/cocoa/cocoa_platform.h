#pragma once

#include "platform/platform.hpp"

namespace morvella {

/// The system that the installer runs on. It lives as long as the process.
const Platform& cocoaPlatform();

}  // namespace morvella
