#import <AppKit/AppKit.h>

/// The life cycle is there to be overridden and to be called as `super`; nothing here calls it.
@implementation NSViewController (Complement)

- (BOOL)isViewLoaded {
    return view != nil;
}

- (void)awakeFromNib {
}

- (void)viewDidLoad {
}

- (void)viewDidAppear {
}

@end
