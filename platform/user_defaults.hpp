#pragma once

#include <memory>
#include <string>

#include "platform/object.hpp"

namespace morvella {

/// A value of the user defaults, usually a text.
class DefaultsValue : public Object {
  public:
    /// The text itself if the value is one, else the platform's description of it.
    [[nodiscard]] virtual std::string text() const = 0;
};

class UserDefaults {
  public:
    virtual ~UserDefaults() = default;

    /// The value stored under `key`, or null.
    [[nodiscard]] virtual std::shared_ptr<DefaultsValue> objectForKey(
        const std::string& key) const = 0;

    /// The same by key-value coding.
    [[nodiscard]] virtual std::shared_ptr<DefaultsValue> valueForKey(
        const std::string& key) const = 0;

    /// Stores `value` by key-value coding; null removes what is stored.
    virtual void setValueForKey(const std::shared_ptr<DefaultsValue>& value,
                                const std::string& key) = 0;
};

/// The domain of the launch arguments.
constexpr const char* argumentDomain = "NSArgumentDomain";

class UserDefaultsSuites {
  public:
    virtual ~UserDefaultsSuites() = default;

    /// Opens the suite of that name, or `argumentDomain`. Never null.
    virtual std::shared_ptr<UserDefaults> open(const std::string& suiteName) = 0;
};

}  // namespace morvella
