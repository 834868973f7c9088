#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/user_defaults.hpp"
#include "support/fake_object.hpp"
#include "support/journal.hpp"

namespace morvella::tests {

class FakeDefaultsValue : public NamedObject<DefaultsValue> {
  public:
    using NamedObject::NamedObject;
    [[nodiscard]] std::string text() const override { return name(); }
};

class FakeUserDefaultsSuites : public UserDefaultsSuites {
  public:
    explicit FakeUserDefaultsSuites(Journal& journal) : journal_(journal) {}
    std::shared_ptr<UserDefaults> open(const std::string& suiteName) override;

    using Values = std::map<std::string, std::shared_ptr<DefaultsValue>>;
    /// The stored values, keyed by suite and then by key.
    std::map<std::string, Values> suites;
    /// The names of the suites, in the order they were opened.
    std::vector<std::string> opened;

  private:
    Journal& journal_;
};

}  // namespace morvella::tests
