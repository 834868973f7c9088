#pragma once

#import <Foundation/Foundation.h>

/// Writes an error where it is asked for and returns NO. `what` could not be done; `code` is the
/// system's reason.
BOOL failed(NSError** error, int code, NSString* what);
