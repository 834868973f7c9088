#include "support/fake_window.hpp"

#include <sstream>
#include <stdexcept>

#include "support/fake_controls.hpp"

namespace morvella::tests {

namespace {

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

std::string describe(AlertStyle style) {
    return style == AlertStyle::critical  ? "critical"
           : style == AlertStyle::warning ? "warning"
                                          : "informational";
}

std::string describe(const Alert& alert) {
    std::ostringstream text;
    text << describe(alert.style) << " " << quoted(alert.messageText);
    if (!alert.informativeText.empty()) {
        text << ", " << quoted(alert.informativeText);
    }
    for (const std::string& button : alert.buttons) {
        text << " [" << button << "]";
    }
    if (alert.showsHelp) {
        text << ", help";
    }
    if (alert.suppressionButton) {
        text << ", check box " << quoted(alert.suppressionButton->title) << " "
             << textOf(alert.suppressionButton->state);
    }
    if (alert.accessory) {
        text << ", with " << nameOf(alert.accessory.get());
    }
    return text.str();
}

}  // namespace

void FakeWindow::makeKeyAndOrderFront(const Object* sender) {
    journal_.write(Kind::window, "made key by " + nameOf(sender));
}

void FakeWindow::beginSheet(const Alert& alert, AlertAnswered answered) {
    journal_.write(Kind::sheet, describe(alert));
    waiting_.push_back(std::move(answered));
}

void FakeWindow::answer(int response, ControlState suppressionState) {
    if (waiting_.empty()) {
        throw std::logic_error("no sheet is waiting for an answer");
    }
    const AlertAnswered answered = waiting_.front();
    waiting_.erase(waiting_.begin());
    answered({.response = response, .suppressionState = suppressionState});
}

void FakeViewController::setView(const std::shared_ptr<View>& view) {
    journal_.write(Kind::page, nameOf(view.get()));
    shown = view;
    if (appeared) {
        appeared();
    }
}

}  // namespace morvella::tests
