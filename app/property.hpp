#pragma once

#include <atomic>
#include <memory>
#include <utility>

namespace morvella {

/// An atomic property that holds a strong reference, or null. A reader's value stays alive even if
/// the property changes.
template <class T>
class Property {
  public:
    using Value = std::shared_ptr<T>;
    [[nodiscard]] Value get() const { return std::atomic_load(&value_); }
    void set(Value value) { std::atomic_store(&value_, std::move(value)); }

  private:
#ifdef __cpp_lib_atomic_shared_ptr
    std::atomic<Value> value_;
#else
    Value value_;
#endif
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

/// Declares a property with a public getter and setter. Members declared after it are public.
#define MORVELLA_PROPERTY(T, name, setName)         \
  private:                                          \
    Property<T> name##_;                            \
                                                    \
  public:                                           \
    [[nodiscard]] Property<T>::Value name() const { \
        return name##_.get();                       \
    }                                               \
    void setName(Property<T>::Value value) {        \
        name##_.set(std::move(value));              \
    }
