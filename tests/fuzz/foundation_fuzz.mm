#import <Foundation/Foundation.h>

#include <algorithm>
#include <cctype>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz.hpp"
#include "live/library_cfg.hpp"
#include "platform/cocoa/conversions.h"
#include "platform/file_url.hpp"
#include "platform/paths.hpp"
#include "platform/text.hpp"

/// The core beside Foundation itself. Where GNUstep differs from Apple's Foundation the core
/// follows Apple's; those inputs are left out here.
namespace {

using namespace morvella;
using fuzz::requireEqual;

/// GNUstep takes a character and the marks on it for one.
bool hasMarks(const std::string& text) {
    NSCharacterSet* marks = [NSCharacterSet nonBaseCharacterSet];
    return [stringOf(text) rangeOfCharacterFromSet:marks].location != NSNotFound;
}

/// GNUstep has rules of its own for home folders, drives, slashes in a row, and dots that stand for
/// folders.
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
    const bool holdsBlank = extension.find(' ') != std::string::npos;
    requireEqual(std::string(pathExtension(path)), holdsBlank ? "" : extension,
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

void compareNumbers(const std::string& text) {
    // GNUstep does not stop at the largest number, and takes other characters for white space.
    const auto digits = std::count_if(text.begin(), text.end(),
                                      [](unsigned char byte) { return std::isdigit(byte); });
    const bool isPlain = std::all_of(text.begin(), text.end(), [](unsigned char byte) {
        return std::isprint(byte) || std::isspace(byte);
    });
    if (digits < 10 && isPlain) {
        requireEqual(intValue(text), [stringOf(text) intValue], "the number in " + text);
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

/// The first line of the input is a path, the second one a component. All of it is a `Library.cfg`.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    const std::string text = fuzz::textOf(data, size);
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
        compareNumbers(path);
        compareLibraryCfg(text);
    }
    [pool release];
    return 0;
}
