#pragma once

/// Registers the colours, fonts and habits that make the interface file look current on GNUstep.
/// They are defaults: a user's own settings still win. Call it before `NSApplicationMain`; AppKit
/// reads them while it starts. Main thread only.
void registerPalette();
