#include "platform/cocoa/conversions.h"

namespace morvella {

std::string textOf(NSString* text) {
    return bytesOf([text dataUsingEncoding:NSUTF8StringEncoding]);
}

std::optional<std::string> optionalTextOf(NSString* text) {
    return text ? std::optional(textOf(text)) : std::nullopt;
}

std::string bytesOf(NSData* data) {
    return {static_cast<const char*>([data bytes]), [data length]};
}

NSString* stringOf(const std::string& text) {
    NSString* string = [[NSString alloc] initWithBytes:text.data()
                                                length:text.size()
                                              encoding:NSUTF8StringEncoding];
    return string ? [string autorelease] : @"";
}

NSString* pathOf(const std::string& path) {
    const bool namesNothing = path.find('\0') != std::string::npos;
    NSString* string = namesNothing ? @"" : stringOf(path);
    return [string length] > 0 ? string : @"/dev/null/not a path";
}

std::shared_ptr<const std::string> sharedTextOf(NSString* text) {
    return text ? std::make_shared<const std::string>(textOf(text)) : nullptr;
}

NSString* stringOf(const std::shared_ptr<const std::string>& text) {
    return text ? stringOf(*text) : nil;
}

NSArray* stringsOf(const std::vector<std::string>& texts) {
    NSMutableArray* strings = [NSMutableArray arrayWithCapacity:texts.size()];
    for (const std::string& text : texts) {
        [strings addObject:stringOf(text)];
    }
    return strings;
}

NSURL* urlOf(const FileUrl& url) {
    return [NSURL fileURLWithPath:pathOf(url.path()) isDirectory:url.namesDirectory()];
}

FileUrl fileUrlOf(NSURL* url) {
    const bool namesDirectory = [[url absoluteString] hasSuffix:@"/"];
    const std::string path = textOf([url path]);
    return namesDirectory ? FileUrl::directory(path) : FileUrl::file(path);
}

ErrorParameter::~ErrorParameter() {
    if (error_) {
        *out_ = Error{textOf([error_ description])};
    }
}

}  // namespace morvella
