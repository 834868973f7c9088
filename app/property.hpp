#pragma once

#include <memory>
#include <utility>

namespace morvella {

/// An atomic property that holds a strong reference; null is "nothing". Reading and writing
/// exchange the reference as a whole, so a reader keeps what it got alive whatever is written
/// meanwhile.
template <class T>
class Property {
  public:
    [[nodiscard]] std::shared_ptr<T> get() const { return std::atomic_load(&value_); }
    void set(std::shared_ptr<T> value) { std::atomic_exchange(&value_, std::move(value)); }

  private:
    std::shared_ptr<T> value_;
};

}  // namespace morvella
