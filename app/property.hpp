#pragma once

#include <atomic>
#include <memory>
#include <utility>

namespace morvella {

/// An atomic property that holds a strong reference; null is "nothing". Reading and writing
/// exchange the reference as a whole, so a reader keeps what it got alive whatever is written
/// meanwhile. Apple's library has no `std::atomic<std::shared_ptr<T>>`.
template <class T>
class Property {
  public:
    using Value = std::shared_ptr<T>;
    [[nodiscard]] Value get() const { return std::atomic_load(&value_); }
    void set(Value value) { std::atomic_exchange(&value_, std::move(value)); }

  private:
    Value value_;
};

template <>
class Property<bool> {
  public:
    using Value = bool;
    [[nodiscard]] Value get() const { return value_; }
    void set(Value value) { value_ = value; }

  private:
    std::atomic<bool> value_ = false;
};

}  // namespace morvella

/// Declares a public getter and setter, and the private property between them.
#define MORVELLA_PROPERTY(T, name, setName)         \
  public:                                           \
    [[nodiscard]] Property<T>::Value name() const { \
        return name##_.get();                       \
    }                                               \
    void setName(Property<T>::Value value) {        \
        name##_.set(std::move(value));              \
    }                                               \
                                                    \
  private:                                          \
    Property<T> name##_
