#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/controls.hpp"
#include "support/fake_object.hpp"
#include "support/journal.hpp"

namespace morvella::tests {

/// "on", "off" or "mixed".
std::string textOf(ControlState state);

/// A control that records in the journal what is done to it.
template <class Interface>
class FakeControl : public NamedObject<Interface> {
  public:
    FakeControl(std::string name, Journal& journal)
        : NamedObject<Interface>(std::move(name)), journal_(journal) {}

  protected:
    void write(const std::string& what) const {
        journal_.write(Kind::control, this->name() + " " + what);
    }

  private:
    Journal& journal_;
};

class FakeButton : public FakeControl<Button> {
  public:
    using FakeControl::FakeControl;
    [[nodiscard]] ControlState state() const override { return currentState; }
    void setState(ControlState state) override;
    void setEnabled(bool enabled) override { write(enabled ? "enabled" : "disabled"); }
    void setHidden(bool hidden) override { write(hidden ? "hidden" : "shown"); }

    ControlState currentState = ControlState::off;
};

class FakeTextFieldCell : public FakeControl<TextFieldCell> {
  public:
    using FakeControl::FakeControl;
    void setTitle(const std::string& title) override { write("says \"" + title + "\""); }
};

using FakeAttributedString = NamedObject<AttributedString>;

class FakeTextView : public FakeControl<TextView> {
  public:
    using FakeControl::FakeControl;
    void setAttributedString(const std::shared_ptr<AttributedString>& text) override {
        write("filled with " + nameOf(text.get()));
    }
};

class FakeProgressIndicator : public FakeControl<ProgressIndicator> {
  public:
    using FakeControl::FakeControl;
    void startAnimation(const Object* sender) override { write("started by " + nameOf(sender)); }
    void stopAnimation(const Object* sender) override { write("stopped by " + nameOf(sender)); }
    void setHidden(bool hidden) override { write(hidden ? "hidden" : "shown"); }
};

/// Names every progress indicator that it creates "new indicator".
class FakeControlFactory : public ControlFactory {
  public:
    explicit FakeControlFactory(Journal& journal) : journal_(journal) {}
    std::shared_ptr<ProgressIndicator> makeProgressIndicator(
        const ProgressIndicatorSettings& settings) override;

    std::vector<std::weak_ptr<ProgressIndicator>> made;

  private:
    Journal& journal_;
};

}  // namespace morvella::tests
