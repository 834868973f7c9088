#import "property_list.h"

/// The defaults of one domain only. A suite's are kept as on macOS, in the home folder's
/// `Library/Preferences`; the launch arguments' cannot be changed.
///
/// No subclass of NSUserDefaults, although it stands for one: GNUstep's would read all of its own
/// domains each time, and lose a little memory.
@interface DomainDefaults : NSObject {
    NSString* _domain;
}
@end

@implementation DomainDefaults

- (instancetype)initWithDomain:(NSString*)domain {
    self = [super init];
    if (self) {
        _domain = [domain copy];
    }
    return self;
}

- (void)dealloc {
    [_domain release];
    [super dealloc];
}

- (NSString*)file {
    return
        [NSString stringWithFormat:@"%@/Library/Preferences/%@.plist", NSHomeDirectory(), _domain];
}

- (NSDictionary*)values {
    return [_domain isEqualToString:NSArgumentDomain]
               ? [[NSUserDefaults standardUserDefaults] volatileDomainForName:NSArgumentDomain]
               : propertyListDictionary([self file]);
}

- (id)objectForKey:(NSString*)key {
    return [[self values] objectForKey:key];
}

- (id)valueForKey:(NSString*)key {
    return [self objectForKey:key];
}

- (void)setValue:(id)value forKey:(NSString*)key {
    if ([_domain isEqualToString:NSArgumentDomain]) {
        return;
    }
    NSMutableDictionary* values = [NSMutableDictionary dictionaryWithDictionary:[self values]];
    [values removeObjectForKey:key];
    if (value) {
        [values setObject:value forKey:key];
    }
    NSString* folder = [[self file] stringByDeletingLastPathComponent];
    [[NSFileManager defaultManager] createDirectoryAtURL:[NSURL fileURLWithPath:folder
                                                                    isDirectory:YES]
                             withIntermediateDirectories:YES
                                              attributes:nil
                                                   error:NULL];
    [[NSPropertyListSerialization dataWithPropertyList:values
                                                format:NSPropertyListBinaryFormat_v1_0
                                               options:0
                                                 error:NULL] writeToFile:[self file]
                                                              atomically:YES];
}

@end

@implementation NSUserDefaults (Complement)

- (instancetype)initWithSuiteName:(NSString*)name {
    [self release];
    return (id)[[DomainDefaults alloc] initWithDomain:name];
}

@end
