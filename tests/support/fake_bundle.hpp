#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/bundle.hpp"
#include "platform/user_defaults.hpp"
#include "support/fake_object.hpp"
#include "support/journal.hpp"

namespace morvella::fakes {

class FakeBundle : public Bundle {
  public:
    explicit FakeBundle(Journal& journal) : journal_(journal) {}
    [[nodiscard]] std::optional<std::string> pathForResource(
        const std::string& name) const override;
    [[nodiscard]] std::optional<FileUrl> urlForResource(const std::string& name) const override;
    [[nodiscard]] std::optional<std::string> infoDictionaryText(
        const std::string& key) const override;

    std::map<std::string, std::string> resources;
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

    /// Adds a bundle at `path` whose information dictionary is empty.
    FakeBundle& add(const std::string& path);

    std::shared_ptr<FakeBundle> main;

  private:
    Journal& journal_;
    std::map<std::string, std::shared_ptr<FakeBundle>> others_;
};

class FakeRichTextReader : public RichTextReader {
  public:
    explicit FakeRichTextReader(Journal& journal) : journal_(journal) {}
    [[nodiscard]] std::shared_ptr<AttributedString> attributedStringWithUrl(
        const FileUrl& url) const override;

    /// By path; anything else cannot be read.
    std::map<std::string, std::shared_ptr<AttributedString>> documents;

  private:
    Journal& journal_;
};

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
    /// By the suite's name and the key.
    std::map<std::string, Values> suites;
    /// The names of the suites in the order in which they were opened.
    std::vector<std::string> opened;

  private:
    Journal& journal_;
};

}  // namespace morvella::fakes
