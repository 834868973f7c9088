#pragma once

#include "platform/cocoa/retained.h"
#include "platform/object.hpp"

#include <memory>

namespace morvella {

/// Implements `Interface`, one of the C++ interfaces, by wrapping an Objective-C object.
template <class Interface, class T>
class Handle : public Interface {
  public:
    explicit Handle(T object) : object_(object) {}
    [[nodiscard]] const void* identity() const override { return object_.get(); }

  protected:
    [[nodiscard]] T object() const { return object_.get(); }

  private:
    Retained<T> object_;
};

/// The object that `handle` wraps, nil for null. Autoreleased: it outlives the handle.
inline id objectOf(const Object* handle) {
    return handle ? [[(id) const_cast<void*>(handle->identity()) retain] autorelease] : nil;
}

/// A new handle to `object`, null for nil.
template <class HandleType, class T>
std::shared_ptr<HandleType> handleOf(T object) {
    return object ? std::make_shared<HandleType>(object) : nullptr;
}

}  // namespace morvella
