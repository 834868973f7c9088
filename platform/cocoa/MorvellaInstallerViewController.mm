#import "platform/cocoa/MorvellaInstallerViewController.h"

#import <QuartzCore/QuartzCore.h>

#import "platform/cocoa/PressMonitor.h"
#import "platform/cocoa/StepsSidebar.h"

#include "app/morvella_installer_view_controller.hpp"
#include "platform/cocoa/cocoa_platform.h"
#include "platform/cocoa/controls.h"
#include "platform/cocoa/conversions.h"
#include "platform/cocoa/guard.h"
#include "platform/cocoa/outlet.h"
#include "platform/cocoa/window.h"

namespace morvella {

namespace {

/// Gives the C++ controller access to its door, which owns both.
class CocoaViewController : public ViewController {
  public:
    explicit CocoaViewController(NSViewController* door) : door_(door) {}

    [[nodiscard]] std::shared_ptr<const Object> self() const override {
        return std::make_shared<const Handle<Object, NSViewController*>>(door_);
    }

    [[nodiscard]] std::shared_ptr<View> view() const override {
        return std::make_shared<CocoaView>([door_ view]);
    }

    void setView(const std::shared_ptr<View>& view) override {
        [door_ setView:objectOf(view.get())];
    }

  private:
    NSViewController* door_;
};

}  // namespace

}  // namespace morvella

using morvella::FileUrl;
using morvella::guarded;
using morvella::sharedTextOf;
using morvella::stringOf;

@implementation MorvellaInstallerViewController

#pragma mark Life cycle

- (instancetype)initWithNibName:(NSString*)name bundle:(NSBundle*)bundle {
    self = [super initWithNibName:name bundle:bundle];
    [self makeController];
    return self;
}

- (instancetype)initWithCoder:(NSCoder*)coder {
    self = [super initWithCoder:coder];
    [self makeController];
    return self;
}

- (void)makeController {
    _viewController = new morvella::CocoaViewController(self);
    _controller =
        new morvella::MorvellaInstallerViewController(*_viewController, morvella::cocoaPlatform());
    morvella::setUnknownStateHandler(self, [self] { _controller->unknownStateReached(); });
}

- (void)dealloc {
    morvella::clearUnknownStateHandler(self);
    delete _controller;
    delete _viewController;
    [super dealloc];
}

- (void)awakeFromNib {
    [super awakeFromNib];
    _connected = YES;
    [NSWindow setAllowsAutomaticWindowTabbing:NO];
    [[[self view] window] center];
    [self viewDidLoad];
    // Windows are ordered in only after the whole interface file has been loaded.
    [self performSelector:@selector(windowIsOnScreen) withObject:nil afterDelay:0];
}

/// The platform may call this before the outlets are connected, repeatedly, or not at all: only the
/// first call after that takes effect.
- (void)viewDidLoad {
    [super viewDidLoad];
    if (_connected && !_loaded) {
        _loaded = YES;
        guarded([&] {
            _controller->viewDidLoad();
            [self showSteps];
        });
    }
}

- (void)windowIsOnScreen {
    _windowIsOnScreen = YES;
    // Live, which launches the installer, may still be the active application.
    [NSApp activateIgnoringOtherApps:YES];
    morvella::requestAttention(false);
    [PressMonitor start];
    guarded([&] { [self drawAndAppear]; });
}

/// Replaces the page in the window, so that the controller's view is always in it.
- (void)setView:(NSView*)view {
    NSView* shown = _loaded ? [self view] : nil;
    NSWindow* window = [shown window];
    if (!window || view == shown) {
        [super setView:view];
        return;
    }
    [view setFrame:[shown frame]];
    [[shown superview] replaceSubview:shown with:view];
    [super setView:view];
    // Tab starts here while no control is first responder.
    [window setInitialFirstResponder:view];
    [window makeFirstResponder:[view nextValidKeyView]];
    if (_windowIsOnScreen) {
        [self drawAndAppear];
    }
}

/// A page's work blocks the main thread, so the page must be on the screen before it starts.
- (void)drawAndAppear {
    [self showSteps];
    NSWindow* window = [[self view] window];
    [window displayIfNeeded];
    [CATransaction flush];
    // If there is a sheet, presses are meant for it, and the user has already seen it.
    if (![window attachedSheet]) {
        [PressMonitor screenChanged];
    }
    _pageToStart = [self view];
    [self viewDidAppear];
}

- (void)showSteps {
    [stepsSidebar setSteps:_controller->steps()];
}

- (void)setStepsSidebar:(StepsSidebar*)sidebar {
    stepsSidebar = sidebar;
}

/// The platform may also call this before the page has been drawn, and again when the window
/// reappears.
- (void)viewDidAppear {
    if (_pageToStart == [self view]) {
        _pageToStart = nil;
        guarded([&] { _controller->viewDidAppear(); });
    }
}

#pragma mark Buttons

- (void)welcomeButton:(id)sender {
    guarded([&] { _controller->welcomeButton(); });
}

- (void)licenseAcceptedButton:(id)sender {
    guarded([&] { _controller->licenseAcceptedButton(); });
}

- (void)beginInstallButton:(id)sender {
    guarded([&] { _controller->beginInstallButton(); });
}

- (void)installDoneButton:(id)sender {
    guarded([&] { _controller->installDoneButton(); });
}

#pragma mark Properties

// The parts of a method cannot be parenthesized.
// NOLINTBEGIN(bugprone-macro-parentheses)

/// Forwards a text property to the C++ controller.
#define MORVELLA_TEXT(name, setName)              \
    -(NSString*)name {                            \
        return stringOf(_controller->name());     \
    }                                             \
    -(void)setName : (NSString*)text {            \
        _controller->setName(sharedTextOf(text)); \
    }

// NOLINTEND(bugprone-macro-parentheses)

MORVELLA_OUTLET(View, initialView, setInitialView)
MORVELLA_OUTLET(View, welcomeView, setWelcomeView)
MORVELLA_OUTLET(TextFieldCell, welcomeVersionString, setWelcomeVersionString)
MORVELLA_OUTLET(TextFieldCell, welcomeBetaString, setWelcomeBetaString)
MORVELLA_OUTLET(View, licenseView, setLicenseView)
MORVELLA_OUTLET(TextView, licenseText, setLicenseText)
MORVELLA_OUTLET(View, settingsView, setSettingsView)
MORVELLA_OUTLET(ProgressIndicator, settingsIndicator, setSettingsIndicator)
MORVELLA_OUTLET(TextFieldCell, settingsInfoText, setSettingsInfoText)
MORVELLA_OUTLET(TextFieldCell, settingsUserLibLabel, setSettingsUserLibLabel)
MORVELLA_OUTLET(Button, settingsNextButton, setSettingsNextButton)
MORVELLA_OUTLET(View, doInstallView, setDoInstallView)
MORVELLA_OUTLET(ProgressIndicator, doInstallIndicator, setDoInstallIndicator)
MORVELLA_OUTLET(View, postInstallView, setPostInstallView)
MORVELLA_OUTLET(Button, postInstallOpenDemoSetCheck, setPostInstallOpenDemoSetCheck)

MORVELLA_TEXT(liveAppPath, setLiveAppPath)
MORVELLA_TEXT(userLibPath, setUserLibPath)
MORVELLA_TEXT(demoSetPath, setDemoSetPath)

- (NSURL*)destinationURL {
    const std::shared_ptr<const FileUrl> url = _controller->destinationURL();
    return url ? morvella::urlOf(*url) : nil;
}

- (void)setDestinationURL:(NSURL*)url {
    _controller->setDestinationURL(url ? std::make_shared<const FileUrl>(morvella::fileUrlOf(url))
                                       : nullptr);
}

- (signed char)resourcesLoaded {
    return _controller->resourcesLoaded() ? YES : NO;
}

- (void)setResourcesLoaded:(signed char)loaded {
    _controller->setResourcesLoaded(loaded);
}

@end
