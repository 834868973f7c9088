#pragma once

#include <map>
#include <optional>

namespace morvella {

/// A press of the mouse or of a key. Times are in seconds since the system was started.
struct Press {
    double time = 0;
    /// Which one of quick clicks at one place it is, from 1; without meaning for a key.
    int clickCount = 1;
    /// The character of the key; nothing for the mouse.
    std::optional<char32_t> key = {};
    /// Whether the key was only held down since its last press.
    bool isRepeat = false;
    /// At most this many seconds lie between two presses that count as one for the user.
    double doubleClickInterval = 0;
};

/// Tells the presses that were meant for the page or sheet on the screen from those that were not:
/// made before it was there, or the later ones of a multiple press. A first press counts at once.
class PressFilter {
  public:
    /// A page or sheet was drawn, or a sheet went.
    void shown(double time);

    /// Whether `press` may press anything. To be asked of each press, in order.
    [[nodiscard]] bool counts(const Press& press);

  private:
    [[nodiscard]] bool continues(const Press& press) const;

    double shown_ = 0;
    std::map<char32_t, double> lastPresses_;
};

}  // namespace morvella
