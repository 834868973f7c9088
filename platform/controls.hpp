#pragma once

#include <memory>
#include <string>

#include "platform/object.hpp"

namespace morvella {

/// The values are the platform's own; `mixed` is neither on nor off.
enum class ControlState { mixed = -1, off = 0, on = 1 };

class Button : public Object {
  public:
    [[nodiscard]] virtual ControlState state() const = 0;
    virtual void setState(ControlState state) = 0;
    virtual void setEnabled(bool enabled) = 0;
    virtual void setHidden(bool hidden) = 0;
};

class TextFieldCell : public Object {
  public:
    virtual void setTitle(const std::string& title) = 0;
};

/// A text with fonts and styles.
class AttributedString : public Object {};

class TextView : public Object {
  public:
    /// Replaces the whole content. Null means an empty text.
    virtual void setAttributedString(const std::shared_ptr<AttributedString>& text) = 0;
};

/// An indicator ignores `sender`, which may be null.
class ProgressIndicator : public Object {
  public:
    virtual void startAnimation(const Object* sender) = 0;
    virtual void stopAnimation(const Object* sender) = 0;
    virtual void setHidden(bool hidden) = 0;
};

/// The values are the platform's own.
enum class ProgressIndicatorStyle { bar = 0, spinning = 1 };

/// How a new progress indicator looks. The frame is in points.
struct ProgressIndicatorSettings {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    ProgressIndicatorStyle style = ProgressIndicatorStyle::bar;
    bool indeterminate = false;
    bool hidden = false;

    bool operator==(const ProgressIndicatorSettings&) const = default;
};

/// Creates controls that are not in the interface file.
class ControlFactory {
  public:
    virtual ~ControlFactory() = default;

    virtual std::shared_ptr<ProgressIndicator> makeProgressIndicator(
        const ProgressIndicatorSettings& settings) = 0;
};

}  // namespace morvella
