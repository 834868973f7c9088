#include "live/library_cfg.hpp"

#include <algorithm>

namespace morvella {

namespace {

constexpr std::string_view sectionStart = "<UserLibrary>";
constexpr std::string_view sectionEnd = "</UserLibrary>";
constexpr std::string_view nameMarker = "<ProjectName Value=";
constexpr std::string_view parentMarker = "<ProjectPath Value=";

/// Whether a newline character stands at the start of `text`, which is not empty. Besides LF, VT,
/// FF and CR these are NEL, LINE SEPARATOR and PARAGRAPH SEPARATOR.
bool startsWithNewline(std::string_view text) {
    return (text[0] >= '\n' && text[0] <= '\r') || text.starts_with("\xC2\x85") ||
           text.starts_with("\xE2\x80\xA8") || text.starts_with("\xE2\x80\xA9");
}

/// Where the line starts in which `position` lies.
size_t startOfLine(std::string_view text, size_t position) {
    while (position > 0 && !startsWithNewline(text.substr(position - 1))) {
        --position;
    }
    return position;
}

/// Cuts off all lines before the first that holds `marker`, or all of the text if no line does.
/// Returns what was cut off.
std::string_view takeUpTo(std::string_view marker, std::string_view& text) {
    const size_t found = text.find(marker);
    const bool isThere = found != std::string_view::npos;
    const std::string_view taken = text.substr(0, isThere ? startOfLine(text, found) : found);
    text.remove_prefix(taken.size());
    return taken;
}

/// Cuts off the first line and returns it. Its newline stays: the next line that holds a marker is
/// found all the same.
std::string_view takeLine(std::string_view& text) {
    size_t length = 0;
    while (length < text.size() && !startsWithNewline(text.substr(length))) {
        ++length;
    }
    const std::string_view line = text.substr(0, length);
    text.remove_prefix(length);
    return line;
}

/// The text between the quotes of a line that has exactly two.
std::optional<std::string_view> quotedValue(std::string_view line) {
    if (std::count(line.begin(), line.end(), '"') != 2) {
        return std::nullopt;
    }
    const size_t start = line.find('"') + 1;
    return line.substr(start, line.rfind('"') - start);
}

/// The value of the last line in `section` that holds `marker` and has one; `earlier` if none has.
std::optional<std::string_view> lastValue(std::string_view section, std::string_view marker,
                                          std::optional<std::string_view> earlier) {
    for (size_t found = section.rfind(marker); found != std::string_view::npos;
         found = section.rfind(marker)) {
        const size_t start = startOfLine(section, found);
        std::string_view line = section.substr(start);
        if (const auto value = quotedValue(takeLine(line))) {
            return value;
        }
        section = section.substr(0, start);
    }
    return earlier;
}

}  // namespace

UserLibraryEntry scanLibraryCfg(std::string_view text) {
    UserLibraryEntry entry;
    // Outside of a section no line has an effect.
    takeUpTo(sectionStart, text);
    while (!text.empty()) {
        const std::string_view section = takeUpTo(sectionEnd, text);
        entry.name = lastValue(section, nameMarker, entry.name);
        entry.parent = lastValue(section, parentMarker, entry.parent);
        takeLine(text);
        takeUpTo(sectionStart, text);
    }
    return entry;
}

}  // namespace morvella
