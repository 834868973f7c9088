#import <Foundation/Foundation.h>

/// GNUstep's own description is the localised sentence alone.
@implementation NSError (Complement)

- (NSString*)description {
    return [NSString stringWithFormat:@"Error Domain=%@ Code=%ld \"%@\"", [self domain],
                                      static_cast<long>([self code]), [self localizedDescription]];
}

@end
