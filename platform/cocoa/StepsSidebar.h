#pragma once

#import <AppKit/AppKit.h>

#include <vector>

#include "app/steps.hpp"

/// The sidebar beside the pages, which shows the current step of the installation. The branding
/// above the steps is part of the interface file.
@interface StepsSidebar : NSView {
    NSMutableArray* _rows;
    NSRect _currentArea;
}

/// Replaces the steps that were shown before.
- (void)setSteps:(const std::vector<morvella::Step>&)steps;

@end
