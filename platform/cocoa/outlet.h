#pragma once

#include "platform/cocoa/handle.h"

/// Implements a property of a door whose value the controller keeps: `Kind` is what its class is
/// called after the prefix.
#define MORVELLA_OUTLET(Kind, name, setName)                                     \
    -(NS##Kind*)name {                                                           \
        return morvella::objectOf(_controller->name());                          \
    }                                                                            \
    -(void)setName : (NS##Kind*)object {                                         \
        _controller->setName(morvella::handleOf<morvella::Cocoa##Kind>(object)); \
    }
