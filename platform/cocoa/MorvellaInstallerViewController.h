#pragma once

#import <AppKit/AppKit.h>

@class StepsSidebar;

namespace morvella {
class MorvellaInstallerViewController;
class ViewController;
}

/// The door to the C++ controller of the same name, which holds the state. It guarantees that the
/// controller is loaded exactly once, and that each page's work starts exactly once, after the page
/// has been drawn, whichever life-cycle methods the platform calls.
@interface MorvellaInstallerViewController : NSViewController {
    morvella::ViewController* _viewController;
    morvella::MorvellaInstallerViewController* _controller;
    BOOL _connected;
    BOOL _loaded;
    BOOL _windowIsOnScreen;
    /// The page that has been drawn but has not started its work. Not retained.
    NSView* _pageToStart;
    /// An outlet, retained by the window.
    IBOutlet StepsSidebar* stepsSidebar;
}

@property(atomic, strong) IBOutlet NSView* initialView;
@property(atomic, strong) IBOutlet NSView* welcomeView;
@property(atomic, strong) IBOutlet NSTextFieldCell* welcomeVersionString;
@property(atomic, strong) IBOutlet NSTextFieldCell* welcomeBetaString;
@property(atomic, strong) IBOutlet NSView* licenseView;
@property(atomic, strong) IBOutlet NSTextView* licenseText;
@property(atomic, strong) IBOutlet NSView* settingsView;
@property(atomic, strong) IBOutlet NSProgressIndicator* settingsIndicator;
@property(atomic, strong) IBOutlet NSTextFieldCell* settingsInfoText;
@property(atomic, strong) IBOutlet NSTextFieldCell* settingsUserLibLabel;
@property(atomic, strong) IBOutlet NSButton* settingsNextButton;
@property(atomic, strong) IBOutlet NSView* doInstallView;
@property(atomic, strong) IBOutlet NSProgressIndicator* doInstallIndicator;
@property(atomic, strong) IBOutlet NSView* postInstallView;
@property(atomic, strong) IBOutlet NSButton* postInstallOpenDemoSetCheck;
@property(atomic) signed char resourcesLoaded;
@property(atomic, strong) NSString* liveAppPath;
@property(atomic, strong) NSString* userLibPath;
@property(atomic, strong) NSURL* destinationURL;
@property(atomic, strong) NSString* demoSetPath;

- (IBAction)welcomeButton:(id)sender;
- (IBAction)licenseAcceptedButton:(id)sender;
- (IBAction)beginInstallButton:(id)sender;
- (IBAction)installDoneButton:(id)sender;

@end
