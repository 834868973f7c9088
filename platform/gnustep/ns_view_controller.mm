#import <AppKit/AppKit.h>

/// The life cycle can be overridden and called as `super`; nothing here calls it.
@implementation NSViewController (Complement)

- (void)awakeFromNib {
}

- (void)viewDidLoad {
}

- (void)viewDidAppear {
}

@end
