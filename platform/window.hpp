#pragma once

#include <memory>

#include "platform/alert.hpp"
#include "platform/object.hpp"

namespace morvella {

class Window : public Object {
  public:
    /// Brings the window to the front and makes it the key window. `sender` may be null.
    virtual void makeKeyAndOrderFront(const Object* sender) = 0;

    /// Shows `alert` as a sheet on this window and returns at once; `answered` is called when the
    /// user has answered. Sheets begun while another is up are shown too, immediately or later.
    virtual void beginSheet(const Alert& alert, AlertAnswered answered) = 0;
};

class View : public Object {
  public:
    /// The window that shows the view; never null. If none does, the result ignores messages as nil
    /// would, but shows an alert in a window of its own: the user must see why the installer cannot
    /// continue, and be able to quit it.
    [[nodiscard]] virtual std::shared_ptr<Window> window() const = 0;
};

/// The C++ controller's view controller on the platform.
class ViewController {
  public:
    virtual ~ViewController() = default;

    /// The view controller as an object; holding it keeps the C++ controller alive.
    [[nodiscard]] virtual std::shared_ptr<const Object> self() const = 0;

    /// The controller's current view; never null.
    [[nodiscard]] virtual std::shared_ptr<View> view() const = 0;

    /// Makes `view` the controller's view: the window shows it, then `viewDidAppear` of the C++
    /// controller is called once.
    virtual void setView(const std::shared_ptr<View>& view) = 0;
};

}  // namespace morvella
