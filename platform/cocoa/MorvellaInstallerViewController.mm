#import "platform/cocoa/MorvellaInstallerViewController.h"

#import <QuartzCore/QuartzCore.h>

#include "app/morvella_installer_view_controller.hpp"
#include "platform/cocoa/cocoa_platform.h"
#include "platform/cocoa/controls.h"
#include "platform/cocoa/conversions.h"
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
using morvella::handleOf;
using morvella::objectOf;
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
}

- (void)dealloc {
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
        _controller->viewDidLoad();
    }
}

- (void)windowIsOnScreen {
    _onScreen = YES;
    [self drawAndAppear];
}

/// The interface file's window shows the first view by itself; every later one is put into it here.
- (void)setView:(NSView*)view {
    NSWindow* window = _loaded ? [[self view] window] : nil;
    [super setView:view];
    if (!window) {
        return;
    }
    // What the platform calls while the window changes comes too early: the page is not drawn yet.
    const BOOL onScreen = _onScreen;
    _onScreen = NO;
    [window setContentView:view];
    [window makeFirstResponder:[view nextValidKeyView]];
    _onScreen = onScreen;
    if (_onScreen) {
        [self drawAndAppear];
    }
}

/// The work of a page blocks the main thread, so the page must be on the screen before it starts.
- (void)drawAndAppear {
    [[[self view] window] displayIfNeeded];
    [CATransaction flush];
    [self viewDidAppear];
}

/// Does not call the inherited method.
- (void)viewDidAppear {
    NSView* page = [self view];
    if (_onScreen && page != _appearedView) {
        _appearedView = page;
        _controller->viewDidAppear();
    }
}

#pragma mark Buttons

- (void)welcomeButton:(id)sender {
    _controller->welcomeButton();
}

- (void)licenseAcceptedButton:(id)sender {
    _controller->licenseAcceptedButton();
}

- (void)beginInstallButton:(id)sender {
    _controller->beginInstallButton();
}

- (void)installDoneButton:(id)sender {
    _controller->installDoneButton();
}

#pragma mark Properties

- (NSView*)initialView {
    return objectOf(_controller->initialView());
}

- (void)setInitialView:(NSView*)view {
    _controller->setInitialView(handleOf<morvella::CocoaView>(view));
}

- (NSView*)welcomeView {
    return objectOf(_controller->welcomeView());
}

- (void)setWelcomeView:(NSView*)view {
    _controller->setWelcomeView(handleOf<morvella::CocoaView>(view));
}

- (NSTextFieldCell*)welcomeVersionString {
    return objectOf(_controller->welcomeVersionString());
}

- (void)setWelcomeVersionString:(NSTextFieldCell*)cell {
    _controller->setWelcomeVersionString(handleOf<morvella::CocoaTextFieldCell>(cell));
}

- (NSTextFieldCell*)welcomeBetaString {
    return objectOf(_controller->welcomeBetaString());
}

- (void)setWelcomeBetaString:(NSTextFieldCell*)cell {
    _controller->setWelcomeBetaString(handleOf<morvella::CocoaTextFieldCell>(cell));
}

- (NSView*)licenseView {
    return objectOf(_controller->licenseView());
}

- (void)setLicenseView:(NSView*)view {
    _controller->setLicenseView(handleOf<morvella::CocoaView>(view));
}

- (NSTextView*)licenseText {
    return objectOf(_controller->licenseText());
}

- (void)setLicenseText:(NSTextView*)view {
    _controller->setLicenseText(handleOf<morvella::CocoaTextView>(view));
}

- (NSView*)settingsView {
    return objectOf(_controller->settingsView());
}

- (void)setSettingsView:(NSView*)view {
    _controller->setSettingsView(handleOf<morvella::CocoaView>(view));
}

- (NSProgressIndicator*)settingsIndicator {
    return objectOf(_controller->settingsIndicator());
}

- (void)setSettingsIndicator:(NSProgressIndicator*)indicator {
    _controller->setSettingsIndicator(handleOf<morvella::CocoaProgressIndicator>(indicator));
}

- (NSTextFieldCell*)settingsInfoText {
    return objectOf(_controller->settingsInfoText());
}

- (void)setSettingsInfoText:(NSTextFieldCell*)cell {
    _controller->setSettingsInfoText(handleOf<morvella::CocoaTextFieldCell>(cell));
}

- (NSTextFieldCell*)settingsUserLibLabel {
    return objectOf(_controller->settingsUserLibLabel());
}

- (void)setSettingsUserLibLabel:(NSTextFieldCell*)cell {
    _controller->setSettingsUserLibLabel(handleOf<morvella::CocoaTextFieldCell>(cell));
}

- (NSButton*)settingsNextButton {
    return objectOf(_controller->settingsNextButton());
}

- (void)setSettingsNextButton:(NSButton*)button {
    _controller->setSettingsNextButton(handleOf<morvella::CocoaButton>(button));
}

- (NSView*)doInstallView {
    return objectOf(_controller->doInstallView());
}

- (void)setDoInstallView:(NSView*)view {
    _controller->setDoInstallView(handleOf<morvella::CocoaView>(view));
}

- (NSProgressIndicator*)doInstallIndicator {
    return objectOf(_controller->doInstallIndicator());
}

- (void)setDoInstallIndicator:(NSProgressIndicator*)indicator {
    _controller->setDoInstallIndicator(handleOf<morvella::CocoaProgressIndicator>(indicator));
}

- (NSView*)postInstallView {
    return objectOf(_controller->postInstallView());
}

- (void)setPostInstallView:(NSView*)view {
    _controller->setPostInstallView(handleOf<morvella::CocoaView>(view));
}

- (NSButton*)postInstallOpenDemoSetCheck {
    return objectOf(_controller->postInstallOpenDemoSetCheck());
}

- (void)setPostInstallOpenDemoSetCheck:(NSButton*)button {
    _controller->setPostInstallOpenDemoSetCheck(handleOf<morvella::CocoaButton>(button));
}

- (NSString*)liveAppPath {
    return stringOf(_controller->liveAppPath());
}

- (void)setLiveAppPath:(NSString*)path {
    _controller->setLiveAppPath(sharedTextOf(path));
}

- (NSString*)userLibPath {
    return stringOf(_controller->userLibPath());
}

- (void)setUserLibPath:(NSString*)path {
    _controller->setUserLibPath(sharedTextOf(path));
}

- (NSString*)demoSetPath {
    return stringOf(_controller->demoSetPath());
}

- (void)setDemoSetPath:(NSString*)path {
    _controller->setDemoSetPath(sharedTextOf(path));
}

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
