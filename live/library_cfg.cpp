#include "live/library_cfg.hpp"

#include <algorithm>

namespace morvella {

namespace {

constexpr std::string_view sectionStart = "<UserLibrary>";
constexpr std::string_view sectionEnd = "</UserLibrary>";
constexpr std::string_view nameMarker = "<ProjectName Value=";
constexpr std::string_view parentMarker = "<ProjectPath Value=";

bool holds(std::string_view line, std::string_view marker) {
    return line.find(marker) != std::string_view::npos;
}

/// The length of the newline character at the start of `text`, 0 if there is none. Besides LF, VT,
/// FF and CR these are NEL, LINE SEPARATOR and PARAGRAPH SEPARATOR.
size_t newlineLength(std::string_view text) {
    if (text.empty()) {
        return 0;
    }
    if (text[0] >= '\n' && text[0] <= '\r') {
        return 1;
    }
    if (text.starts_with("\xC2\x85")) {
        return 2;
    }
    return text.starts_with("\xE2\x80\xA8") || text.starts_with("\xE2\x80\xA9") ? 3 : 0;
}

/// Cuts the first line off `text`, without its newline.
std::string_view takeLine(std::string_view& text) {
    size_t length = 0;
    while (length < text.size() && newlineLength(text.substr(length)) == 0) {
        ++length;
    }
    const std::string_view line = text.substr(0, length);
    text.remove_prefix(length + newlineLength(text.substr(length)));
    return line;
}

/// Cuts off all lines before the first that holds `sectionStart`: outside of a section no other
/// line has an effect. False if no line holds it.
bool skipToSection(std::string_view& text) {
    size_t start = text.find(sectionStart);
    if (start == std::string_view::npos) {
        return false;
    }
    while (start > 0 && newlineLength(text.substr(start - 1)) == 0) {
        --start;
    }
    text.remove_prefix(start);
    return true;
}

/// The text between the quotes of a line that has exactly two.
std::optional<std::string_view> quotedValue(std::string_view line) {
    if (std::count(line.begin(), line.end(), '"') != 2) {
        return std::nullopt;
    }
    const size_t start = line.find('"') + 1;
    return line.substr(start, line.rfind('"') - start);
}

}  // namespace

UserLibraryEntry scanLibraryCfg(std::string_view text) {
    UserLibraryEntry entry;
    while (skipToSection(text)) {
        while (!text.empty()) {
            const std::string_view line = takeLine(text);
            if (holds(line, sectionEnd)) {
                break;
            }
            const auto value = quotedValue(line);
            if (value && holds(line, nameMarker)) {
                entry.name = value;
            }
            if (value && holds(line, parentMarker)) {
                entry.parent = value;
            }
        }
    }
    return entry;
}

}  // namespace morvella
