#import "property_list.h"

@interface MacBundle : NSBundle
@end

@implementation MacBundle

/// GNUstep does not look for it in Contents. nil if there is none or if it is damaged.
- (NSDictionary*)infoDictionary {
    if (!_infoDict) {
        NSString* path = [[self bundlePath] stringByAppendingPathComponent:@"Contents/Info.plist"];
        _infoDict = [propertyListDictionary(path) retain];
    }
    return _infoDict;
}

@end

@implementation NSBundle (Complement)

+ (instancetype)bundleWithURL:(NSURL*)url {
    BOOL isDirectory = NO;
    [[NSFileManager defaultManager] fileExistsAtPath:[url path] isDirectory:&isDirectory];
    return isDirectory ? [[[MacBundle alloc] initWithPath:[url path]] autorelease] : nil;
}

@end
