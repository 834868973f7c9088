#include "live/library_cfg.hpp"

#include <algorithm>
#include <utility>

namespace morvella {

namespace {

bool holds(std::string_view line, std::string_view marker) {
    return line.find(marker) != std::string_view::npos;
}

/// The length of the newline character at the start of `text`; 0 if there is none. Foundation's
/// newline characters are LF, VT, FF, CR, NEL, LINE SEPARATOR and PARAGRAPH SEPARATOR.
size_t newlineLength(std::string_view text) {
    if (text[0] >= '\n' && text[0] <= '\r') {
        return 1;
    }
    if (text.starts_with("\xC2\x85")) {
        return 2;
    }
    return text.starts_with("\xE2\x80\xA8") || text.starts_with("\xE2\x80\xA9") ? 3 : 0;
}

/// Removes the first line and its newline from `text`, which is not empty. Returns the line.
std::string_view takeLine(std::string_view& text) {
    for (size_t end = 0; end < text.size(); ++end) {
        if (const size_t length = newlineLength(text.substr(end))) {
            const std::string_view line = text.substr(0, end);
            text.remove_prefix(end + length);
            return line;
        }
    }
    return std::exchange(text, {});
}

/// Sets `value` to the text between the quotes of a line that has exactly two.
void takeQuotedText(std::string_view line, std::optional<std::string_view>& value) {
    if (std::count(line.begin(), line.end(), '"') == 2) {
        const size_t start = line.find('"') + 1;
        value = line.substr(start, line.rfind('"') - start);
    }
}

}  // namespace

UserLibraryEntry scanLibraryCfg(std::string_view text) {
    UserLibraryEntry entry;
    bool inSection = false;
    while (!text.empty()) {
        const std::string_view line = takeLine(text);
        if (holds(line, "<UserLibrary>")) {
            inSection = true;
        }
        if (holds(line, "</UserLibrary>")) {
            inSection = false;
        }
        if (inSection && holds(line, "<ProjectName Value=")) {
            takeQuotedText(line, entry.name);
        }
        if (inSection && holds(line, "<ProjectPath Value=")) {
            takeQuotedText(line, entry.parent);
        }
    }
    return entry;
}

}  // namespace morvella
