#pragma once

#import <AppKit/AppKit.h>

/// What every alert is an instance of here.
@interface CompletedAlert : NSAlert {
    BOOL _showsSuppressionButton;
    NSButton* _suppressionButton;
    NSView* _accessoryView;
}
@end
