#import <AppKit/AppKit.h>

@implementation NSViewController (Complement)

- (void)awakeFromNib {
}

- (void)viewDidLoad {
}

- (void)viewDidAppear {
}

@end
