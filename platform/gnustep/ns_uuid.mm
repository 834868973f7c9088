#include <sys/random.h>
#include <array>

#import <Foundation/Foundation.h>

/// GNUstep opens the device of random numbers anew for every identifier, and gives one to every
/// object of an interface file.
@implementation NSUUID (Complement)

- (instancetype)init {
    std::array<uint8_t, 16> bytes{};
    // So few bytes are always read as a whole, and without a failure.
    [[maybe_unused]] const ssize_t read = getrandom(bytes.data(), bytes.size(), 0);
    // Version 4 of the identifiers: random.
    bytes[6] = static_cast<uint8_t>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<uint8_t>((bytes[8] & 0x3F) | 0x80);
    return [self initWithUUIDBytes:bytes.data()];
}

@end
