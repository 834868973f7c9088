#pragma once

#import <Foundation/Foundation.h>

#include "platform/error.hpp"
#include "platform/file_url.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

/// Conversions between C++ values and Foundation's. Texts are UTF-8 and keep their Unicode normal
/// form. Returned objects are autoreleased.
namespace morvella {

/// nil gives an empty text.
std::string textOf(NSString* text);
std::optional<std::string> optionalTextOf(NSString* text);

std::string bytesOf(NSData* data);

/// Text that is not UTF-8 gives an empty string.
NSString* stringOf(const std::string& text);

/// A path for Foundation, which would truncate it at a NUL and take an empty one for the current
/// folder. Such a path, or one that is not UTF-8, becomes a path below /dev/null, where nothing can
/// ever exist.
NSString* pathOf(const std::string& path);

/// nil gives null.
std::shared_ptr<const std::string> sharedTextOf(NSString* text);
NSString* stringOf(const std::shared_ptr<const std::string>& text);

NSArray* stringsOf(const std::vector<std::string>& texts);

/// Converts the path with `pathOf`.
NSURL* urlOf(const FileUrl& url);
FileUrl fileUrlOf(NSURL* url);

/// Adapts `ErrorOut` to an `NSError**` argument, as in `error:ErrorParameter(out)`, and copies the
/// error back at the end of the full expression. A null `out` requests no error.
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
