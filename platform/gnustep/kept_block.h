#pragma once

#import <Foundation/Foundation.h>

/// A copy of a block, as the object that a block itself is not here.
@interface KeptBlock : NSObject {
    void* _block;
}

+ (instancetype)keeping:(const void*)block;

- (void*)block;

/// Calls a block without arguments.
- (void)call;

/// Calls a block that takes an object.
- (void)callWith:(id)argument;

@end
