#import "kept_block.h"

#include <Block.h>

@implementation KeptBlock

+ (instancetype)keeping:(const void*)block {
    KeptBlock* kept = [[[KeptBlock alloc] init] autorelease];
    kept->_block = _Block_copy(block);
    return kept;
}

- (void)dealloc {
    _Block_release(_block);
    [super dealloc];
}

- (void*)block {
    return _block;
}

- (void)call {
    reinterpret_cast<void (^)(void)>(_block)();
}

- (void)callWith:(id)argument {
    reinterpret_cast<void (^)(id)>(_block)(argument);
}

@end
