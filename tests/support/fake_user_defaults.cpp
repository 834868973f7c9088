#include "support/fake_user_defaults.hpp"

namespace morvella::tests {

namespace {

class FakeUserDefaults : public UserDefaults {
  public:
    FakeUserDefaults(std::string name, FakeUserDefaultsSuites::Values& values, Journal& journal)
        : name_(std::move(name)), values_(values), journal_(journal) {}

    [[nodiscard]] std::shared_ptr<DefaultsValue> objectForKey(
        const std::string& key) const override {
        journal_.write(Kind::question, name_ + ", object for key " + key);
        return find(key);
    }

    [[nodiscard]] std::shared_ptr<DefaultsValue> valueForKey(
        const std::string& key) const override {
        journal_.write(Kind::question, name_ + ", value for key " + key);
        return find(key);
    }

    void setValueForKey(const std::shared_ptr<DefaultsValue>& value,
                        const std::string& key) override {
        journal_.write(Kind::defaults,
                       name_ + ", value " + nameOf(value.get()) + " for key " + key);
        values_[key] = value;
    }

  private:
    [[nodiscard]] std::shared_ptr<DefaultsValue> find(const std::string& key) const {
        const auto found = values_.find(key);
        return found == values_.end() ? nullptr : found->second;
    }

    std::string name_;
    FakeUserDefaultsSuites::Values& values_;
    Journal& journal_;
};

}  // namespace

std::shared_ptr<UserDefaults> FakeUserDefaultsSuites::open(const std::string& suiteName) {
    opened.push_back(suiteName);
    return std::make_shared<FakeUserDefaults>(suiteName, suites[suiteName], journal_);
}

}  // namespace morvella::tests
