#import <Foundation/Foundation.h>

/// GNUstep's description is only the localized sentence.
@implementation NSError (Complement)

- (NSString*)description {
    return [NSString stringWithFormat:@"Error Domain=%@ Code=%ld \"%@\"", [self domain],
                                      static_cast<long>([self code]), [self localizedDescription]];
}

@end
