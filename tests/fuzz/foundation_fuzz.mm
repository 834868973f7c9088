#import <Foundation/Foundation.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "live/library_cfg.hpp"
#include "live/live_version.hpp"
#include "platform/cocoa/conversions.h"
#include "platform/file_url.hpp"
#include "platform/paths.hpp"
#include "platform/text.hpp"

/// Compares the core with Foundation itself. Where GNUstep differs from Apple's Foundation, the
/// core follows Apple's, and the comparison leaves those inputs out.
namespace {

using namespace morvella;

/// Aborts if the two differ; the fuzzer then saves the input.
template <class Value>
void requireEqual(const Value& actual, const Value& expected, std::string_view what) {
    if (actual != expected) {
        std::cerr << what << "\n  is         " << actual << "\n  instead of " << expected << '\n';
        std::abort();
    }
}

/// GNUstep treats a character and its combining marks as one character.
bool hasMarks(const std::string& text) {
    NSCharacterSet* marks = [NSCharacterSet nonBaseCharacterSet];
    return [stringOf(text) rangeOfCharacterFromSet:marks].location != NSNotFound;
}

/// GNUstep has its own rules for home folders, drive letters, repeated slashes, and the components
/// "." and "..".
bool isPlain(const std::string& path) {
    if (hasMarks(path)) {
        return false;
    }
    const auto lacks = [&](const char* part) {
        return (path + "/").find(part) == std::string::npos;
    };
    return lacks("~") && lacks(":") && lacks("\\") && lacks("//") && lacks("/./") && lacks("/../");
}

void comparePaths(const std::string& path, const std::string& component) {
    const std::string extension = textOf([stringOf(path) pathExtension]);
    const bool hasSpace = extension.find(' ') != std::string::npos;
    requireEqual(std::string(pathExtension(path)), hasSpace ? "" : extension,
                 "the extension of " + path);
    requireEqual(deletingLastPathComponent(path),
                 textOf([stringOf(path) stringByDeletingLastPathComponent]),
                 path + " without its last component");
    requireEqual(appendingPathComponent(path, component),
                 textOf([stringOf(path) stringByAppendingPathComponent:stringOf(component)]),
                 path + " and " + component);
}

void compareUrls(const std::string& path) {
    for (const BOOL isDirectory : {NO, YES}) {
        NSURL* url = [NSURL fileURLWithPath:stringOf(path) isDirectory:isDirectory];
        const FileUrl own = isDirectory ? FileUrl::directory(path) : FileUrl::file(path);
        requireEqual(own.absoluteString(), textOf([url absoluteString]), "the URL of " + path);
        requireEqual(own.path(), textOf([url path]), "the path of the URL of " + path);
    }
}

void comparePieces(const std::string& text) {
    const char* separator = "/Contents/MacOS/Live";
    NSArray* pieces = [stringOf(text) componentsSeparatedByString:stringOf(std::string(separator))];
    const auto own = componentsSeparatedBy<std::vector<std::string_view>>(text, separator);
    requireEqual<size_t>(own.size(), [pieces count], "the number of pieces of " + text);
    for (size_t i = 0; i < own.size(); ++i) {
        requireEqual(std::string(own[i]), textOf([pieces objectAtIndex:i]), "a piece of " + text);
    }
}

/// GNUstep does not clamp large numbers, and treats other characters as white space.
bool holdsPlainNumbers(const std::string& text) {
    const auto digits = std::count_if(text.begin(), text.end(),
                                      [](unsigned char byte) { return std::isdigit(byte); });
    return digits < 10 && std::all_of(text.begin(), text.end(), [](unsigned char byte) {
               return std::isprint(byte) || std::isspace(byte);
           });
}

void compareVersions(const std::string& folder) {
    NSString* version = [stringOf(folder) stringByReplacingOccurrencesOfString:@"Live "
                                                                    withString:@""];
    NSArray* pieces = [version componentsSeparatedByString:@"."];
    const LiveVersion own = liveVersionOfFolder(folder);
    NSUInteger at = 0;
    for (const int32_t number : {own.major, own.minor, own.patch}) {
        const int32_t expected = at < [pieces count] ? [[pieces objectAtIndex:at] intValue] : 0;
        requireEqual(number, expected, "a number of the version " + folder);
        ++at;
    }
}

bool holds(NSString* line, NSString* marker) {
    return [line rangeOfString:marker options:NSLiteralSearch].location != NSNotFound;
}

std::optional<std::string> valueIn(NSString* line, NSString* marker) {
    NSCharacterSet* quote = [NSCharacterSet characterSetWithCharactersInString:@"\""];
    NSArray* pieces = [line componentsSeparatedByCharactersInSet:quote];
    const bool counts = holds(line, marker) && [pieces count] == 3;
    return counts ? std::optional(textOf([pieces objectAtIndex:1])) : std::nullopt;
}

void compareLibraryCfg(const std::string& text) {
    NSMutableCharacterSet* newlines =
        [[[NSCharacterSet newlineCharacterSet] mutableCopy] autorelease];
    [newlines addCharactersInRange:NSMakeRange(0x2028, 2)];  // GNUstep's set lacks them.
    std::optional<std::string> name;
    std::optional<std::string> parent;
    bool inSection = false;
    for (NSString* line in [stringOf(text) componentsSeparatedByCharactersInSet:newlines]) {
        inSection = (inSection || holds(line, @"<UserLibrary>")) && !holds(line, @"</UserLibrary>");
        if (inSection) {
            const auto newName = valueIn(line, @"<ProjectName Value=");
            const auto newParent = valueIn(line, @"<ProjectPath Value=");
            name = newName ? newName : name;
            parent = newParent ? newParent : parent;
        }
    }
    const UserLibraryEntry own = scanLibraryCfg(text);
    requireEqual(std::string(own.name.value_or("(none)")), name.value_or("(none)"), "the name");
    requireEqual(std::string(own.parent.value_or("(none)")), parent.value_or("(none)"),
                 "the parent");
}

}  // namespace

/// The first line of the input serves as a path and as the name of a preferences folder, the rest
/// as a component, and all of it as a `Library.cfg`.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size);
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (isUtf8(text) && text.find('\0') == std::string::npos) {
        const size_t lineEnd = text.find('\n');
        const std::string path = text.substr(0, lineEnd);
        const std::string component = lineEnd == std::string::npos ? "" : text.substr(lineEnd + 1);
        if (isPlain("/" + path + "/" + component)) {
            comparePaths(path, component);
            compareUrls("/" + path);
        }
        if (!hasMarks(path)) {
            comparePieces(path);
        }
        if (holdsPlainNumbers(path)) {
            requireEqual(intValue(path), [stringOf(path) intValue], "the number in " + path);
            compareVersions(path);
        }
        compareLibraryCfg(text);
    }
    [pool release];
    return 0;
}
