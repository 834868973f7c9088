#pragma once

#import <AppKit/AppKit.h>

namespace morvella {
class MorvellaInstallerLicenseVC;
}

/// The door to the C++ controller of the same name, which holds the state.
@interface MorvellaInstallerLicenseVC : NSViewController {
    morvella::MorvellaInstallerLicenseVC* _controller;
    BOOL _connected;
    BOOL _loaded;
}

@property(atomic, strong) IBOutlet NSTextView* licenseView;
@property(atomic, strong) NSAttributedString* licenseText;

@end
