#pragma once

#include "platform/cocoa/retained.h"
#include "platform/object.hpp"

#include <memory>

namespace morvella {

/// `Interface`, one of the C++ interfaces, implemented on the object that it stands for.
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

/// The object that `handle` stands for, nil for null. The caller does not own it.
inline id objectOf(const Object* handle) {
    return handle ? (id) const_cast<void*>(handle->identity()) : nil;
}

template <class Interface>
id objectOf(const std::shared_ptr<Interface>& handle) {
    return [[objectOf(handle.get()) retain] autorelease];
}

/// A new handle of `object`, null for nil.
template <class HandleType, class T>
std::shared_ptr<HandleType> handleOf(T object) {
    return object ? std::make_shared<HandleType>(object) : nullptr;
}

}  // namespace morvella
