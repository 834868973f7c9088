#pragma once

#import <Foundation/Foundation.h>

#include <string>

namespace morvella::gnustep_tests {

inline std::string text(NSString* string) {
    return string ? [string UTF8String] : "(nil)";
}
inline NSString* string(const std::string& text) {
    return [NSString stringWithUTF8String:text.c_str()];
}
inline NSURL* fileUrl(const std::string& path) {
    return [NSURL fileURLWithPath:string(path) isDirectory:NO];
}
inline NSURL* folderUrl(const std::string& path) {
    return [NSURL fileURLWithPath:string(path) isDirectory:YES];
}

/// An error that no call makes: one that is still there afterwards was not touched.
inline NSError* untouched() {
    static NSError* error = [[NSError alloc] initWithDomain:@"untouched" code:1 userInfo:nil];
    return error;
}

}  // namespace morvella::gnustep_tests
