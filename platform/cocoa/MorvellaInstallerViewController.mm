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

/// The door as the C++ controller sees it. The door owns both.
class CocoaViewController : public ViewController {
  public:
    explicit CocoaViewController(NSViewController* door) : door_(door) {}

    [[nodiscard]] std::shared_ptr<const Object> self() const override {
        return std::make_shared<const Handle<Object, NSViewController*>>(door_);
    }

    [[nodiscard]] std::shared_ptr<View> view() const override {
        return handleOf<CocoaView>([door_ view]);
    }

    void setView(const std::shared_ptr<View>& view) override { [door_ setView:objectOf(view)]; }

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
    _self = new morvella::CocoaViewController(self);
    _controller = new morvella::MorvellaInstallerViewController(*_self, morvella::cocoaPlatform());
    morvella::setUnknownStateHandler([self] { _controller->unknownStateReached(); });
}

- (void)dealloc {
    morvella::setUnknownStateHandler(nullptr);
    delete _controller;
    delete _self;
    [super dealloc];
}

- (void)awakeFromNib {
    [super awakeFromNib];
    _connected = YES;
    [[[self view] window] center];
    [self viewDidLoad];
    // The windows of the interface file come on the screen only when all of it has been loaded.
    [self performSelector:@selector(windowIsOnScreen) withObject:nil afterDelay:0];
}

/// The platform may call this before the outlets are connected, or not at all when the view came
/// from another interface file: the first call after `awakeFromNib` counts, and no other.
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
    _onScreen = YES;
    // Whoever opened the installer may be in front of it.
    [NSApp activateIgnoringOtherApps:YES];
    [PressMonitor start];
    guarded([&] { [self drawAndAppear]; });
}

/// A new page takes the place of the one before.
- (void)setView:(NSView*)view {
    NSView* shown = _loaded ? [self view] : nil;
    NSWindow* window = [shown window];
    // What the platform calls while the view changes comes too early: the page is not drawn yet.
    const BOOL onScreen = _onScreen;
    _onScreen = NO;
    [super setView:view];
    if (window) {
        [view setFrame:[shown frame]];
        [[shown superview] replaceSubview:shown with:view];
        [window makeFirstResponder:[view nextValidKeyView]];
    }
    _onScreen = onScreen;
    if (_onScreen && window) {
        [self drawAndAppear];
    }
}

/// The work of a page blocks the main thread, so the page must be on the screen before it starts.
- (void)drawAndAppear {
    [self showSteps];
    NSWindow* window = [[self view] window];
    [window displayIfNeeded];
    [CATransaction flush];
    // What is pressed while a sheet is shown was not meant for the page behind it.
    if (![window attachedSheet]) {
        [PressMonitor screenChanged];
    }
    [self viewDidAppear];
}

- (void)showSteps {
    [stepsSidebar setSteps:_controller->steps()];
}

- (void)setStepsSidebar:(StepsSidebar*)sidebar {
    stepsSidebar = sidebar;
}

/// Does not call the inherited method.
- (void)viewDidAppear {
    NSView* page = [self view];
    if (_onScreen && page != _appearedView) {
        _appearedView = page;
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

// Parentheses have no place around the parts of a method.
// NOLINTBEGIN(bugprone-macro-parentheses)

/// A text that the controller keeps.
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
