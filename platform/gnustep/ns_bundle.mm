#import "property_list.h"

@interface MacBundle : NSBundle
@end

@implementation MacBundle

/// In Contents, where GNUstep does not look. nil if it is missing or damaged.
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
