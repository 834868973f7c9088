#pragma once

#import <Foundation/Foundation.h>

#include <utility>

namespace morvella {

/// Holds a strong reference to an Objective-C object, by manual retain and release.
template <class T>
class Retained {
  public:
    Retained() = default;
    explicit Retained(T object) : object_([object retain]) {}
    Retained(const Retained& other) : object_([other.object_ retain]) {}
    Retained(Retained&& other) noexcept : object_(std::exchange(other.object_, nil)) {}
    Retained& operator=(Retained other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Retained() { [object_ release]; }

    [[nodiscard]] T get() const { return object_; }

  private:
    T object_ = nil;
};

}  // namespace morvella
