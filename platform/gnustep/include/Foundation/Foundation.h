#pragma once

// GNUstep's Foundation and the parts of Apple's that it lacks.

#pragma GCC system_header

// GNUstep's is a whole number of seconds.
#define systemUptime wholeSystemUptime
#include_next <Foundation/Foundation.h>
#undef systemUptime

@interface NSProcessInfo (Complement)
/// In seconds, on the clock of the events' times.
- (NSTimeInterval)systemUptime;
@end

@interface NSFileManager (Complement)
- (NSArray*)URLsForDirectory:(NSSearchPathDirectory)directory
                   inDomains:(NSSearchPathDomainMask)domains;
@end

@interface NSFileManager (Trash)
/// The item's new location is not reported: `resultingUrl` is set to nil.
- (BOOL)trashItemAtURL:(NSURL*)url resultingItemURL:(NSURL**)resultingUrl error:(NSError**)error;
@end

typedef NSUInteger NSDataReadingOptions;

@interface NSData (Complement)
+ (instancetype)dataWithContentsOfFile:(NSString*)path
                               options:(NSDataReadingOptions)options
                                 error:(NSError**)error;
@end

@interface NSUserDefaults (Complement)
- (instancetype)initWithSuiteName:(NSString*)name;
@end
