#include "support/fake_bundle.hpp"

namespace morvella::tests {

namespace {

template <class Value>
std::optional<Value> lookUp(const std::map<std::string, Value>& values, const std::string& key) {
    const auto found = values.find(key);
    return found == values.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

std::optional<std::string> FakeBundle::pathForResource(const std::string& name) const {
    journal_.write(Kind::question, "path of resource " + name);
    return lookUp(resources, name);
}

std::shared_ptr<AttributedString> FakeBundle::attributedStringForResource(
    const std::string& name) const {
    journal_.write(Kind::question, "rich text of resource " + name);
    return resources.contains(name) ? lookUp(documents, name).value_or(nullptr) : nullptr;
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

}  // namespace morvella::tests
