#include "support/fake_bundle.hpp"

namespace morvella::fakes {

namespace {

template <class Value>
std::optional<Value> lookUp(const std::map<std::string, Value>& values, const std::string& key) {
    const auto found = values.find(key);
    return found == values.end() ? std::nullopt : std::optional(found->second);
}

class FakeUserDefaults : public UserDefaults {
  public:
    FakeUserDefaults(std::string name, FakeUserDefaultsSuites::Values& values, Journal& journal)
        : name_(std::move(name)), values_(values), journal_(journal) {}

    [[nodiscard]] std::shared_ptr<DefaultsValue> objectForKey(
        const std::string& key) const override {
        journal_.write(Kind::question, name_ + ", object for key " + key);
        return lookUp(values_, key).value_or(nullptr);
    }

    [[nodiscard]] std::shared_ptr<DefaultsValue> valueForKey(
        const std::string& key) const override {
        journal_.write(Kind::question, name_ + ", value for key " + key);
        return lookUp(values_, key).value_or(nullptr);
    }

    void setValueForKey(const std::shared_ptr<DefaultsValue>& value,
                        const std::string& key) override {
        journal_.write(Kind::defaults,
                       name_ + ", value " + nameOf(value.get()) + " for key " + key);
        values_[key] = value;
    }

  private:
    std::string name_;
    FakeUserDefaultsSuites::Values& values_;
    Journal& journal_;
};

}  // namespace

std::optional<std::string> FakeBundle::pathForResource(const std::string& name) const {
    journal_.write(Kind::question, "path of resource " + name);
    return lookUp(resources, name);
}

std::optional<FileUrl> FakeBundle::urlForResource(const std::string& name) const {
    journal_.write(Kind::question, "URL of resource " + name);
    const auto path = lookUp(resources, name);
    return path ? std::optional(FileUrl::file(*path)) : std::nullopt;
}

std::optional<std::string> FakeBundle::infoDictionaryText(const std::string& key) const {
    journal_.write(Kind::question, "information " + key);
    return lookUp(information, key);
}

std::shared_ptr<const Bundle> FakeBundles::bundleWithUrl(const FileUrl& url) const {
    journal_.write(Kind::question, "bundle at " + url.path() + (url.namesDirectory() ? "/" : ""));
    return lookUp(others_, url.path()).value_or(nullptr);
}

FakeBundle& FakeBundles::add(const std::string& path) {
    return *(others_[path] = std::make_shared<FakeBundle>(journal_));
}

std::shared_ptr<AttributedString> FakeRichTextReader::attributedStringWithUrl(
    const FileUrl& url) const {
    journal_.write(Kind::question, "rich text of " + url.path());
    return lookUp(documents, url.path()).value_or(nullptr);
}

std::shared_ptr<UserDefaults> FakeUserDefaultsSuites::open(const std::string& suiteName) {
    opened.push_back(suiteName);
    return std::make_shared<FakeUserDefaults>(suiteName, suites[suiteName], journal_);
}

}  // namespace morvella::fakes
