#pragma once

#import <Foundation/Foundation.h>

#include "platform/error.hpp"
#include "platform/file_url.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

/// Between C++ values and Foundation's. Texts are UTF-8 and keep their normal form. What is
/// returned as an object is autoreleased.
namespace morvella {

/// nil gives an empty text.
std::string textOf(NSString* text);
std::optional<std::string> optionalTextOf(NSString* text);

/// Text that is not UTF-8 gives an empty string.
NSString* stringOf(const std::string& text);

/// A text that may be missing: null stands for nil.
std::shared_ptr<const std::string> sharedTextOf(NSString* text);
NSString* stringOf(const std::shared_ptr<const std::string>& text);

NSArray* stringsOf(const std::vector<std::string>& texts);

NSURL* urlOf(const FileUrl& url);
FileUrl fileUrlOf(NSURL* url);

/// Writes `error` where it is asked for. A missing error object gives an empty description.
void writeError(NSError* error, ErrorOut out);

}  // namespace morvella
