#pragma once

#include <functional>

namespace morvella {

/// Does what the platform has called for. Every way in from the platform goes through here: its
/// event loop catches an Objective-C exception too, but goes on as if nothing had happened. Here it
/// is logged, and whoever is set below is told. Where that raises as well, or nobody is set, the
/// application ends.
void guarded(const std::function<void()>& work);

/// Null for nobody.
void setUnknownStateHandler(std::function<void()> handler);

}  // namespace morvella
