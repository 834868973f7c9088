#pragma once

namespace morvella {

/// A C++ handle to an object of the platform. The handle owns a strong reference to it. Created,
/// used and destroyed on the main thread only, like everything in this folder.
class Object {
  public:
    virtual ~Object() = default;

    /// Handles with the same identity stand for the same object. Null only for the window of a view
    /// that is in none.
    [[nodiscard]] virtual const void* identity() const = 0;
};

}  // namespace morvella
