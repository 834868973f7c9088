#import "property_list.h"

/// The defaults of one domain only. A suite's are kept as on macOS, in the home folder's
/// `Library/Preferences`; the launch arguments' cannot be changed. No subclass of NSUserDefaults,
/// although it stands for one: that would read all of GNUstep's domains each time.
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

- (BOOL)isOfArguments {
    return [_domain isEqualToString:NSArgumentDomain];
}

- (NSString*)folder {
    return [NSHomeDirectory() stringByAppendingPathComponent:@"Library/Preferences"];
}

- (NSString*)file {
    return [NSString stringWithFormat:@"%@/%@.plist", [self folder], _domain];
}

- (NSDictionary*)values {
    return [self isOfArguments]
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
    if ([self isOfArguments]) {
        return;
    }
    NSMutableDictionary* values = [NSMutableDictionary dictionaryWithDictionary:[self values]];
    [values setValue:value forKey:key];
    [[NSFileManager defaultManager] createDirectoryAtPath:[self folder]
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
