#pragma once

#import <AppKit/AppKit.h>

/// The left side of a page: the product, and the steps of the installation with the current one
/// marked. The interface file places one on each page and sets its step. What is in it is made when
/// it comes into a window.
@interface StepsSidebar : NSView {
    NSInteger _currentStep;
}

/// Counted from 1; 0 until it is set.
@property(nonatomic) NSInteger currentStep;

@end
