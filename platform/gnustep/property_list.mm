#import "property_list.h"

NSDictionary* propertyListDictionary(NSString* path) {
    NSData* data = [NSData dataWithContentsOfFile:path options:0 error:NULL];
    if (!data) {
        return nil;
    }
    id list = nil;
    // A damaged list may raise instead of failing.
    @try {
        list = [NSPropertyListSerialization propertyListWithData:data
                                                         options:NSPropertyListImmutable
                                                          format:NULL
                                                           error:NULL];
    } @catch (NSException* exception) {
        list = nil;
    }
    return [list isKindOfClass:[NSDictionary class]] ? list : nil;
}
