#pragma once

namespace morvella {

/// Decides which presses of buttons and keys count: only those made for what the user saw. Presses
/// less than half a second apart form a series. A series counts as a whole, if it began at least
/// half a second after the page or sheet was drawn.
///
/// Times are in seconds since the system was started.
class PressFilter {
  public:
    /// Call when a page or sheet has been drawn, or a sheet has closed.
    void shown(double time);

    /// Call once for every press, in the order the presses arrive. The repeats of a held key belong
    /// to the series of its press, however far apart they are, and never count themselves.
    [[nodiscard]] bool counts(double time, bool isRepeat);

  private:
    /// When something was last shown or pressed.
    double last_ = 0;
    /// Something was shown, and there has been no pause of half a second since.
    bool ignoring_ = true;
};

}  // namespace morvella
