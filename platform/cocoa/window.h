#pragma once

#import <AppKit/AppKit.h>

#include "platform/cocoa/handle.h"
#include "platform/window.hpp"

namespace morvella {

/// Bounces the Dock icon if another application is active and so keeps its windows in front: once,
/// or, if `critical`, until the user switches to the installer.
void requestAttention(bool critical);

class CocoaWindow : public Handle<Window, NSWindow*> {
  public:
    using Handle::Handle;
    void makeKeyAndOrderFront(const Object* sender) override;
    void beginSheet(const Alert& alert, AlertAnswered answered) override;
};

class CocoaView : public Handle<View, NSView*> {
  public:
    using Handle::Handle;
    [[nodiscard]] std::shared_ptr<Window> window() const override;
};

}  // namespace morvella
