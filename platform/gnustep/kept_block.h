#pragma once

#import <Foundation/Foundation.h>

/// A copied block as an object: with GCC's runtime, blocks are not objects.
@interface KeptBlock : NSObject {
    void* _block;
}

+ (instancetype)keeping:(const void*)block;

- (void*)block;
- (void)call;
- (void)callWith:(id)argument;

@end
