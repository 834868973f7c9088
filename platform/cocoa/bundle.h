#pragma once

#import <Foundation/Foundation.h>

#include "platform/bundle.hpp"
#include "platform/cocoa/retained.h"

namespace morvella {

class CocoaBundle : public Bundle {
  public:
    explicit CocoaBundle(NSBundle* bundle) : bundle_(bundle) {}
    [[nodiscard]] std::optional<std::string> pathForResource(
        const std::string& name) const override;
    [[nodiscard]] std::shared_ptr<AttributedString> attributedStringForResource(
        const std::string& name) const override;
    [[nodiscard]] std::optional<std::string> infoDictionaryText(
        const std::string& key) const override;

  private:
    Retained<NSBundle*> bundle_;
};

class CocoaBundles : public Bundles {
  public:
    [[nodiscard]] std::shared_ptr<const Bundle> mainBundle() const override;
    [[nodiscard]] std::shared_ptr<const Bundle> bundleWithUrl(const FileUrl& url) const override;
};

}  // namespace morvella
