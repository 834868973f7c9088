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

    /// Where the resource of that whole file name, extension included, lies; nothing if there is
    /// none.
    [[nodiscard]] virtual std::optional<std::string> pathForResource(
        const std::string& name) const = 0;

    /// The rich-text document of that file name, whose format is recognised from the file; null if
    /// it is missing or cannot be read.
    [[nodiscard]] virtual std::shared_ptr<AttributedString> attributedStringForResource(
        const std::string& name) const = 0;

    /// A text of the information dictionary; nothing if it is missing or not a text.
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
