// Runs one lookup on real files, several times, and prints for each the nanoseconds that it took;
// then by how many kilobytes the process's memory grew at its peak, and what was found.
#import <Foundation/Foundation.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <map>
#include <string>

#include "live/get_live_user_lib.hpp"
#include "platform/cocoa/cocoa_platform.h"
#include "platform/cocoa/conversions.h"

namespace {

using Lookup = std::function<std::string(const std::string&)>;

/// A value in kilobytes from what the system tells about this process.
long memory(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name + ":")) {
            return std::strtol(line.c_str() + name.size() + 1, nullptr, 10);
        }
    }
    return 0;
}

std::string userLibrary(const std::string& preferenceFolder) {
    const morvella::getLiveUserLib lookup(morvella::cocoaPlatform());
    int32_t status = 0;
    return lookup.getUserLibraryErrorInt(preferenceFolder, &status).value_or("nothing");
}

std::string latestFolder(const std::string& homeDirectory) {
    const morvella::getLiveUserLib lookup(morvella::cocoaPlatform());
    return lookup.getLatestPreferenceFolderUsingHomeDirectory(homeDirectory).value_or("nothing");
}

BOOL holds(NSString* line, NSString* marker) {
    return [line rangeOfString:marker].location != NSNotFound;
}

NSString* quotedValue(NSString* line, NSString* otherwise) {
    NSArray* pieces = [line componentsSeparatedByString:@"\""];
    return [pieces count] == 3 ? [pieces objectAtIndex:1] : otherwise;
}

/// The User Library as Foundation's own methods find it: one string, cut into lines.
std::string userLibraryByFoundation(const std::string& preferenceFolder) {
    NSString* file = morvella::stringOf(preferenceFolder + "/Library.cfg");
    NSString* text = [NSString stringWithContentsOfFile:file
                                               encoding:NSUTF8StringEncoding
                                                  error:NULL];
    NSArray* lines =
        [text componentsSeparatedByCharactersInSet:[NSCharacterSet newlineCharacterSet]];
    BOOL inSection = NO;
    NSString* name = nil;
    NSString* parent = nil;
    for (NSString* line in lines) {
        if (holds(line, @"<UserLibrary>")) {
            inSection = YES;
        }
        if (holds(line, @"</UserLibrary>")) {
            inSection = NO;
        }
        if (inSection && holds(line, @"<ProjectName Value=")) {
            name = quotedValue(line, name);
        }
        if (inSection && holds(line, @"<ProjectPath Value=")) {
            parent = quotedValue(line, parent);
        }
    }
    if (!name || !parent) {
        return "nothing";
    }
    NSString* path = [NSString stringWithFormat:@"%@/%@", parent, name];
    [[NSURL fileURLWithPath:path] checkResourceIsReachableAndReturnError:NULL];
    return morvella::textOf(path);
}

}  // namespace

int main(int argc, char** argv) {
    const std::map<std::string, Lookup> lookups{
        {"user-library", userLibrary},
        {"user-library-by-foundation", userLibraryByFoundation},
        {"latest-folder", latestFolder}};
    const int times = argc == 4 ? std::atoi(argv[3]) : 0;
    if (times < 1 || lookups.count(argv[1]) == 0) {
        std::fputs("usage: lookup NAME FOLDER TIMES\n", stderr);
        return 2;
    }
    const Lookup& lookup = lookups.at(argv[1]);
    std::string found;
    const long before = memory("VmRSS");
    for (int i = 0; i < times; ++i) {
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        const auto start = std::chrono::steady_clock::now();
        found = lookup(argv[2]);
        const std::chrono::nanoseconds taken = std::chrono::steady_clock::now() - start;
        [pool release];
        std::printf("%lld\n", static_cast<long long>(taken.count()));
    }
    std::printf("%ld\n%s\n", memory("VmHWM") - before, found.c_str());
}
