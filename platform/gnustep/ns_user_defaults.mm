#include "property_list.h"

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

- (BOOL)holdsArguments {
    return [_domain isEqualToString:NSArgumentDomain];
}

- (NSString*)folder {
    return [NSHomeDirectory() stringByAppendingPathComponent:@"Library/Preferences"];
}

- (NSString*)file {
    return
        [[self folder] stringByAppendingPathComponent:[_domain stringByAppendingString:@".plist"]];
}

- (NSDictionary*)values {
    if ([self holdsArguments]) {
        return [[NSUserDefaults standardUserDefaults] volatileDomainForName:NSArgumentDomain];
    }
    NSDictionary* values = propertyListDictionary([self file]);
    return values ? values : @{};
}

- (id)objectForKey:(NSString*)key {
    return [[self values] objectForKey:key];
}

- (void)setObject:(id)value forKey:(NSString*)key {
    if ([self holdsArguments]) {
        return;
    }
    NSMutableDictionary* values = [[[self values] mutableCopy] autorelease];
    [values removeObjectForKey:key];
    if (value) {
        [values setObject:value forKey:key];
    }
    [[NSFileManager defaultManager] createDirectoryAtURL:[NSURL fileURLWithPath:[self folder]
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

- (void)removeObjectForKey:(NSString*)key {
    [self setObject:nil forKey:key];
}

- (id)valueForKey:(NSString*)key {
    return [self objectForKey:key];
}

- (void)setValue:(id)value forKey:(NSString*)key {
    [self setObject:value forKey:key];
}

@end

@implementation NSUserDefaults (Complement)

- (instancetype)initWithSuiteName:(NSString*)name {
    [self release];
    return (id)[[DomainDefaults alloc] initWithDomain:name];
}

@end
