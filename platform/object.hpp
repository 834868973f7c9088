#pragma once

namespace morvella {

/// A C++ handle that owns a strong reference to an object of the platform. Created, used and
/// destroyed on the main thread only.
class Object {
  public:
    virtual ~Object() = default;

    /// Handles with the same identity wrap the same object. Null only for the window of a view that
    /// is in none.
    [[nodiscard]] virtual const void* identity() const = 0;
};

}  // namespace morvella
