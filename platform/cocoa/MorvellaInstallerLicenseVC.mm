#import "platform/cocoa/MorvellaInstallerLicenseVC.h"

#include "app/morvella_installer_license_vc.hpp"
#include "platform/cocoa/cocoa_platform.h"
#include "platform/cocoa/controls.h"
#include "platform/cocoa/guard.h"
#include "platform/cocoa/outlet.h"

@implementation MorvellaInstallerLicenseVC

- (instancetype)initWithNibName:(NSString*)name bundle:(NSBundle*)bundle {
    self = [super initWithNibName:name bundle:bundle];
    if (self) {
        _controller = new morvella::MorvellaInstallerLicenseVC(morvella::cocoaPlatform());
    }
    return self;
}

- (instancetype)initWithCoder:(NSCoder*)coder {
    self = [super initWithCoder:coder];
    if (self) {
        _controller = new morvella::MorvellaInstallerLicenseVC(morvella::cocoaPlatform());
    }
    return self;
}

- (void)dealloc {
    delete _controller;
    [super dealloc];
}

MORVELLA_OUTLET(TextView, licenseView, setLicenseView)
MORVELLA_OUTLET(AttributedString, licenseText, setLicenseText)

- (void)awakeFromNib {
    [super awakeFromNib];
    _connected = YES;
    [self viewDidLoad];
}

/// The platform may call this before the outlets are connected, repeatedly, or not at all: only the
/// first call after that takes effect.
- (void)viewDidLoad {
    [super viewDidLoad];
    if (_connected && !_loaded) {
        _loaded = YES;
        morvella::guarded([&] { _controller->viewDidLoad(); });
    }
}

@end
