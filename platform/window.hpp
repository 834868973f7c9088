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
    /// user has answered. A sheet that is asked for while another is up is shown as well: at once
    /// or after it.
    virtual void beginSheet(const Alert& alert, AlertAnswered answered) = 0;
};

class View : public Object {
  public:
    /// The window that shows the view, or null.
    [[nodiscard]] virtual std::shared_ptr<Window> window() const = 0;
};

/// What the controller has by being a view controller of the platform.
class ViewController {
  public:
    virtual ~ViewController() = default;

    /// The controller as an object. Whoever holds it keeps the controller alive.
    [[nodiscard]] virtual std::shared_ptr<const Object> self() const = 0;

    /// The view that the controller has now.
    [[nodiscard]] virtual std::shared_ptr<View> view() const = 0;

    /// Makes `view` the controller's view: the window shows it, then the controller's
    /// `viewDidAppear` is called once.
    virtual void setView(const std::shared_ptr<View>& view) = 0;
};

}  // namespace morvella
