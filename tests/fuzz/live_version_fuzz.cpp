#include <algorithm>
#include <limits>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "fuzz.hpp"
#include "live/get_live_user_lib.hpp"
#include "live/live_version.hpp"
#include "platform/text.hpp"
#include "support/installer_test.hpp"

namespace {

using morvella::fuzz::requireEqual;
using Triple = std::tuple<int32_t, int32_t, int32_t>;

/// Every character that Foundation takes for white space before an integer, in UTF-8.
std::set<std::string> whiteSpaces() {
    std::set<std::string> spaces = {"\x7F", "\xE3\x80\x80"};
    for (int low = 0; low <= 0x20; ++low) {
        spaces.emplace(1, static_cast<char>(low));
    }
    for (int last = 0x80; last <= 0xA0; ++last) {
        spaces.insert(std::string("\xC2") + static_cast<char>(last));
    }
    for (int last = 0x80; last <= 0x8B; ++last) {
        spaces.insert(std::string("\xE2\x80") + static_cast<char>(last));
    }
    return spaces;
}

/// How many bytes the white space at the start of a text has; 0 if there is none.
size_t whiteSpaceAtStart(const std::string& text) {
    static const std::set<std::string> spaces = whiteSpaces();
    size_t length = 3;
    while (length > 0 && spaces.count(text.substr(0, length)) == 0) {
        --length;
    }
    return length;
}

/// The number at the start of a text, by the standard library.
int32_t numberIn(std::string text) {
    using Limits = std::numeric_limits<int32_t>;
    while (const size_t length = whiteSpaceAtStart(text)) {
        text.erase(0, length);
    }
    try {
        return std::stoi(text);
    } catch (const std::invalid_argument&) {
        return 0;
    } catch (const std::out_of_range&) {
        return text[0] == '-' ? Limits::min() : Limits::max();
    }
}

Triple versionIn(std::string name) {
    const std::string prefix = "Live ";
    std::string text;
    while (!name.empty()) {
        if (name.starts_with(prefix)) {
            name.erase(0, prefix.size());
        } else {
            text += name[0];
            name.erase(0, 1);
        }
    }
    std::vector<std::string> pieces;
    std::istringstream stream(text);
    for (std::string piece; std::getline(stream, piece, '.');) {
        pieces.push_back(piece);
    }
    pieces.resize(3, "0");
    return {numberIn(pieces[0]), numberIn(pieces[1]), numberIn(pieces[2])};
}

/// The folder of the latest version: of all that are as late as any, the one listed first.
std::string latest(const std::vector<std::string>& names) {
    std::vector<std::pair<Triple, std::string>> folders = {{{-1, -1, -1}, "nothing"}};
    for (const std::string& name : names) {
        if (name.substr(0, 5) == "Live ") {
            folders.emplace_back(versionIn(name), "/home/Library/Preferences/Ableton/" + name);
        }
    }
    const auto later = [](const auto& one, const auto& other) { return one.first > other.first; };
    std::stable_sort(folders.begin(), folders.end(), later);
    return folders.front().second;
}

}  // namespace

/// Each line of the input is the name of a folder.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    std::vector<std::string> names;
    std::istringstream lines(morvella::fuzz::textOf(data, size));
    for (std::string name; std::getline(lines, name) && names.size() < 20;) {
        names.push_back(name);
        const morvella::LiveVersion version = morvella::liveVersionOfFolder(name);
        const auto [major, minor, patch] = versionIn(name);
        requireEqual(version.major, major, "the major version of " + name);
        requireEqual(version.minor, minor, "the minor version of " + name);
        requireEqual(version.patch, patch, "the patch of " + name);
    }
    morvella::tests::FakePlatform fakes;
    fakes.disk.listings["/home/Library/Preferences/Ableton/"] = names;
    const morvella::getLiveUserLib lookup(fakes.platform);
    const auto folder = lookup.getLatestPreferenceFolderUsingHomeDirectory("/home");
    requireEqual(folder.value_or("nothing"), latest(names), "the folder of the latest version");
    return 0;
}
