#pragma once

#include "platform/cocoa/handle.h"

/// Forwards an outlet property to the C++ controller. `Kind` is the class without its prefix:
/// Button for NSButton.
#define MORVELLA_OUTLET(Kind, name, setName)                                     \
    -(NS##Kind*)name {                                                           \
        return morvella::objectOf(_controller->name().get());                    \
    }                                                                            \
    -(void)setName : (NS##Kind*)object {                                         \
        _controller->setName(morvella::handleOf<morvella::Cocoa##Kind>(object)); \
    }
