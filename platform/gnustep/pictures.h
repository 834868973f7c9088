#pragma once

/// Names the small pictures that the interface file and the standard controls ask for: the check
/// box in its two states, and the check mark that is part of macOS. Drawn in the palette's colours.
void registerPictures();
