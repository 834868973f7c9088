#pragma once

#import <AppKit/AppKit.h>

#include "platform/cocoa/handle.h"
#include "platform/controls.hpp"

namespace morvella {

class CocoaButton : public Handle<Button, NSButton*> {
  public:
    using Handle::Handle;
    [[nodiscard]] ControlState state() const override;
    void setState(ControlState state) override;
    void setEnabled(bool enabled) override;
    void setHidden(bool hidden) override;
};

class CocoaTextFieldCell : public Handle<TextFieldCell, NSTextFieldCell*> {
  public:
    using Handle::Handle;
    void setTitle(const std::string& title) override;
};

class CocoaAttributedString : public Handle<AttributedString, NSAttributedString*> {
  public:
    using Handle::Handle;
};

class CocoaTextView : public Handle<TextView, NSTextView*> {
  public:
    using Handle::Handle;
    void setAttributedString(const std::shared_ptr<AttributedString>& text) override;
};

class CocoaProgressIndicator : public Handle<ProgressIndicator, NSProgressIndicator*> {
  public:
    /// Makes the indicator animate in its own thread where the platform supports that.
    explicit CocoaProgressIndicator(NSProgressIndicator* indicator);
    void startAnimation(const Object* sender) override;
    void stopAnimation(const Object* sender) override;
    void setHidden(bool hidden) override;
};

class CocoaControlFactory : public ControlFactory {
  public:
    std::shared_ptr<ProgressIndicator> makeProgressIndicator(
        const ProgressIndicatorSettings& settings) override;
};

}  // namespace morvella
