#pragma once

#import <Foundation/Foundation.h>

#include "platform/cocoa/handle.h"
#include "platform/user_defaults.hpp"

namespace morvella {

class CocoaDefaultsValue : public Handle<DefaultsValue, id> {
  public:
    using Handle::Handle;
    [[nodiscard]] std::string text() const override;
};

class CocoaUserDefaults : public UserDefaults {
  public:
    explicit CocoaUserDefaults(NSUserDefaults* defaults) : defaults_(defaults) {}
    [[nodiscard]] std::shared_ptr<DefaultsValue> objectForKey(
        const std::string& key) const override;
    [[nodiscard]] std::shared_ptr<DefaultsValue> valueForKey(const std::string& key) const override;
    void setValueForKey(const std::shared_ptr<DefaultsValue>& value,
                        const std::string& key) override;

  private:
    Retained<NSUserDefaults*> defaults_;
};

class CocoaUserDefaultsSuites : public UserDefaultsSuites {
  public:
    std::shared_ptr<UserDefaults> open(const std::string& suiteName) override;
};

}  // namespace morvella
