#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/controls.hpp"
#include "platform/file_url.hpp"

namespace morvella {

class Bundle {
  public:
    virtual ~Bundle() = default;

    /// The path of the resource with this full file name, extension included; nothing if there is
    /// none.
    [[nodiscard]] virtual std::optional<std::string> pathForResource(
        const std::string& name) const = 0;

    /// The rich-text document with this file name, in any format that the platform recognises; null
    /// if it is missing or cannot be read.
    [[nodiscard]] virtual std::shared_ptr<AttributedString> attributedStringForResource(
        const std::string& name) const = 0;

    /// A string from the information dictionary; nothing if it is missing or not a string.
    [[nodiscard]] virtual std::optional<std::string> infoDictionaryText(
        const std::string& key) const = 0;
};

class Bundles {
  public:
    virtual ~Bundles() = default;

    /// The installer's own bundle.
    [[nodiscard]] virtual std::shared_ptr<const Bundle> mainBundle() const = 0;

    /// The bundle at `url`; null if there is none.
    [[nodiscard]] virtual std::shared_ptr<const Bundle> bundleWithUrl(const FileUrl& url) const = 0;
};

}  // namespace morvella
