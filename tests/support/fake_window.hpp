#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/window.hpp"
#include "support/fake_object.hpp"
#include "support/journal.hpp"

namespace morvella::tests {

class FakeWindow : public NamedObject<Window> {
  public:
    explicit FakeWindow(Journal& journal) : NamedObject("window"), journal_(journal) {}
    void makeKeyAndOrderFront(const Object* sender) override;
    /// Records the alert in one line, leaving out the parts that it lacks.
    void beginSheet(const Alert& alert, AlertAnswered answered) override;

    /// Answers the oldest unanswered sheet.
    void answer(int response, ControlState suppressionState = ControlState::off);
    [[nodiscard]] size_t sheetsWaiting() const { return waiting_.size(); }

  private:
    Journal& journal_;
    std::vector<AlertAnswered> waiting_;
};

class FakeView : public NamedObject<View> {
  public:
    FakeView(std::string name, std::shared_ptr<Window> window)
        : NamedObject(std::move(name)), window_(std::move(window)) {}
    [[nodiscard]] std::shared_ptr<Window> window() const override { return window_; }

  private:
    std::shared_ptr<Window> window_;
};

/// A second handle to the object behind another view.
class OtherHandle : public FakeView {
  public:
    explicit OtherHandle(const std::shared_ptr<FakeView>& view)
        : FakeView("another handle to " + view->name(), view->window()),
          identity_(view->identity()) {}
    [[nodiscard]] const void* identity() const override { return identity_; }

  private:
    const void* identity_;
};

/// Only remembers the view. Calls `appeared`, if set, each time one is set, as the platform does.
class FakeViewController : public ViewController {
  public:
    explicit FakeViewController(Journal& journal) : journal_(journal) {}
    [[nodiscard]] std::shared_ptr<const Object> self() const override { return object; }
    [[nodiscard]] std::shared_ptr<View> view() const override { return shown; }
    void setView(const std::shared_ptr<View>& view) override;

    std::shared_ptr<const Object> object = std::make_shared<NamedObject<Object>>("controller");
    std::shared_ptr<View> shown;
    std::function<void()> appeared;

  private:
    Journal& journal_;
};

}  // namespace morvella::tests
