#import "property_list.h"

/// The defaults of one domain: the read-only launch arguments, or a suite, stored as on macOS. Not
/// a subclass of NSUserDefaults, which would read all of GNUstep's domains each time.
@interface DomainDefaults : NSObject {
  @public
    NSString* _file;  // nil for the launch arguments.
}
@end

@implementation DomainDefaults

- (void)dealloc {
    [_file release];
    [super dealloc];
}

- (NSDictionary*)values {
    return _file ? propertyListDictionary(_file)
                 : [[NSUserDefaults standardUserDefaults] volatileDomainForName:NSArgumentDomain];
}

- (id)objectForKey:(NSString*)key {
    return [[self values] objectForKey:key];
}

- (id)valueForKey:(NSString*)key {
    return [[self values] objectForKey:key];
}

- (void)setValue:(id)value forKey:(NSString*)key {
    NSMutableDictionary* values = [NSMutableDictionary dictionaryWithDictionary:[self values]];
    [values setValue:value forKey:key];
    [[NSFileManager defaultManager] createDirectoryAtPath:[_file stringByDeletingLastPathComponent]
                              withIntermediateDirectories:YES
                                               attributes:nil
                                                    error:NULL];
    [values writeToFile:_file atomically:YES];
}

@end

@implementation NSUserDefaults (Complement)

- (instancetype)initWithSuiteName:(NSString*)name {
    [self release];
    DomainDefaults* defaults = [[DomainDefaults alloc] init];
    if (![name isEqualToString:NSArgumentDomain]) {
        NSString* file = [NSString stringWithFormat:@"Library/Preferences/%@.plist", name];
        defaults->_file = [[NSHomeDirectory() stringByAppendingPathComponent:file] retain];
    }
    return (id)defaults;
}

@end
