#pragma once

#ifdef __cplusplus
extern "C" {
#endif

typedef struct MorvellaDispatchQueue* dispatch_queue_t;
typedef void (^dispatch_block_t)(void);

/// The only queue. Its blocks run in order on later turns of the main run loop, even while it
/// tracks the mouse or runs a modal window.
dispatch_queue_t dispatch_get_main_queue(void);

/// Adds a copy of `block` to `queue` and returns at once.
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);

#ifdef __cplusplus
}
#endif
