#pragma once

namespace morvella {

/// Decides which button and key presses count: only those meant for what the user saw. Presses less
/// than half a second apart form a series. The whole series counts if it began at least half a
/// second after the page or sheet was drawn.
///
/// Times are in seconds since system start-up.
class PressFilter {
  public:
    /// Call when a page or sheet has been drawn, or a sheet has closed.
    void shown(double time);

    /// Call once for every press, in the order the presses arrive. Repeats of a held key belong to
    /// the series of its first press, however far apart they are, and never count themselves.
    [[nodiscard]] bool counts(double time, bool isRepeat);

  private:
    /// When something was last shown or pressed.
    double last_ = 0;
    /// Something was shown, and there has been no pause of half a second since.
    bool ignoring_ = true;
};

}  // namespace morvella
