#pragma once

#import <Foundation/Foundation.h>

/// The dictionary in the property list at `path`; nil if there is none.
NSDictionary* propertyListDictionary(NSString* path);
