#pragma once

#import <AppKit/AppKit.h>

#include <vector>

#include "app/steps.hpp"

/// Stands beside the pages and shows which step of the installation is being taken. The product
/// above the steps is drawn in the interface file.
@interface StepsSidebar : NSView {
    NSMutableArray* _rows;
    NSRect _currentArea;
}

/// Replaces the steps that were shown before.
- (void)setSteps:(const std::vector<morvella::Step>&)steps;

@end
