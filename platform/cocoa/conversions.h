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

std::string bytesOf(NSData* data);

/// Text that is not UTF-8 gives an empty string.
NSString* stringOf(const std::string& text);

/// A path on its way to the platform. The platform would cut it at a NUL, and take an empty one for
/// the current folder; either names nothing, and so does what is not UTF-8. What goes out in its
/// place lies below a file: nothing is ever there, and nothing can be made there.
NSString* pathOf(const std::string& path);

/// A text that may be missing: null stands for nil.
std::shared_ptr<const std::string> sharedTextOf(NSString* text);
NSString* stringOf(const std::shared_ptr<const std::string>& text);

NSArray* stringsOf(const std::vector<std::string>& texts);

/// The path goes out as `pathOf` has it.
NSURL* urlOf(const FileUrl& url);
FileUrl fileUrlOf(NSURL* url);

/// Stands in an error parameter, as in `error:ErrorParameter(out)`: what the platform hands out is
/// written to `out` when the call is over. If nobody asks, the platform is given no place for an
/// error.
class ErrorParameter {
  public:
    explicit ErrorParameter(ErrorOut out) : out_(out) {}
    ~ErrorParameter();
    ErrorParameter(const ErrorParameter&) = delete;
    ErrorParameter& operator=(const ErrorParameter&) = delete;

    operator NSError**() { return out_ ? &error_ : nullptr; }

  private:
    ErrorOut out_;
    NSError* error_ = nil;
};

}  // namespace morvella
