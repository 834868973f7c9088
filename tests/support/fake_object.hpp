#pragma once

#include <string>
#include <utility>

#include "platform/object.hpp"

namespace morvella::tests {

/// Every fake object has a name, which the journal uses.
class Named {
  public:
    explicit Named(std::string name) : name_(std::move(name)) {}
    virtual ~Named() = default;
    [[nodiscard]] const std::string& name() const { return name_; }

  private:
    std::string name_;
};

/// The base class of a fake with a name. `Interface` must derive from `Object`.
template <class Interface>
class NamedObject : public Interface, public Named {
  public:
    using Named::Named;
    [[nodiscard]] const void* identity() const override { return this; }
};

/// The name of a fake object; "nobody" for null.
inline std::string nameOf(const Object* object) {
    if (!object) {
        return "nobody";
    }
    const auto* named = dynamic_cast<const Named*>(object);
    return named ? named->name() : "a stranger";
}

}  // namespace morvella::tests
