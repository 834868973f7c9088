#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/bundle.hpp"
#include "support/journal.hpp"

namespace morvella::tests {

class FakeBundle : public Bundle {
  public:
    explicit FakeBundle(Journal& journal) : journal_(journal) {}
    [[nodiscard]] std::optional<std::string> pathForResource(
        const std::string& name) const override;
    [[nodiscard]] std::shared_ptr<AttributedString> attributedStringForResource(
        const std::string& name) const override;
    [[nodiscard]] std::optional<std::string> infoDictionaryText(
        const std::string& key) const override;

    std::map<std::string, std::string> resources;
    /// The resources that are rich text.
    std::map<std::string, std::shared_ptr<AttributedString>> documents;
    std::map<std::string, std::string> information;

  private:
    Journal& journal_;
};

class FakeBundles : public Bundles {
  public:
    explicit FakeBundles(Journal& journal)
        : main(std::make_shared<FakeBundle>(journal)), journal_(journal) {}
    [[nodiscard]] std::shared_ptr<const Bundle> mainBundle() const override { return main; }
    [[nodiscard]] std::shared_ptr<const Bundle> bundleWithUrl(const FileUrl& url) const override;

    /// Adds a bundle at `path` with an empty information dictionary.
    FakeBundle& add(const std::string& path);

    std::shared_ptr<FakeBundle> main;

  private:
    Journal& journal_;
    std::map<std::string, std::shared_ptr<FakeBundle>> others_;
};

}  // namespace morvella::tests
