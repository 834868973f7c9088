#include <optional>
#include <string>
#include <vector>

#include "fuzz.hpp"
#include "live/library_cfg.hpp"
#include "platform/utf8.hpp"

namespace {

using morvella::fuzz::requireEqual;
using Value = std::optional<std::string>;

/// The characters of a UTF-8 text; nothing if it is malformed. Each is decoded first and then held
/// against the shortest way of writing it.
std::optional<std::u32string> decoded(const std::string& bytes) {
    std::u32string characters;
    for (size_t i = 0; i < bytes.size();) {
        const auto lead = static_cast<unsigned char>(bytes[i]);
        const size_t length = lead < 0x80           ? 1
                              : (lead >> 5) == 0x06 ? 2
                              : (lead >> 4) == 0x0E ? 3
                              : (lead >> 3) == 0x1E ? 4
                                                    : 0;
        if (length == 0 || i + length > bytes.size()) {
            return std::nullopt;
        }
        char32_t character = length == 1 ? lead : lead & (0x7FU >> length);
        for (size_t next = i + 1; next < i + length; ++next) {
            const auto byte = static_cast<unsigned char>(bytes[next]);
            if ((byte >> 6) != 0x02) {
                return std::nullopt;
            }
            character = character * 64 + (byte & 0x3FU);
        }
        const size_t shortest = character < 0x80      ? 1
                                : character < 0x800   ? 2
                                : character < 0x10000 ? 3
                                                      : 4;
        const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
        if (length != shortest || surrogate || character > 0x10FFFF) {
            return std::nullopt;
        }
        characters += character;
        i += length;
    }
    return characters;
}

/// A character as bytes again.
std::string encoded(char32_t character) {
    std::string bytes;
    const auto add = [&](char32_t byte) { bytes += static_cast<char>(byte); };
    if (character < 0x80) {
        add(character);
    } else if (character < 0x800) {
        add(0xC0 + character / 64);
        add(0x80 + character % 64);
    } else if (character < 0x10000) {
        add(0xE0 + character / 4096);
        add(0x80 + character / 64 % 64);
        add(0x80 + character % 64);
    } else {
        add(0xF0 + character / 262144);
        add(0x80 + character / 4096 % 64);
        add(0x80 + character / 64 % 64);
        add(0x80 + character % 64);
    }
    return bytes;
}

std::vector<std::string> linesOf(const std::u32string& text) {
    const std::u32string newlines = U"\n\v\f\r\u0085\u2028\u2029";
    std::vector<std::string> lines(1);
    for (const char32_t character : text) {
        if (newlines.find(character) != std::u32string::npos) {
            lines.emplace_back();
        } else {
            lines.back() += encoded(character);
        }
    }
    return lines;
}

std::vector<std::string> piecesBetweenQuotes(const std::string& line) {
    std::vector<std::string> pieces(1);
    for (const char character : line) {
        if (character == '"') {
            pieces.emplace_back();
        } else {
            pieces.back() += character;
        }
    }
    return pieces;
}

struct Entry {
    Value name;
    Value parent;
};

/// Every line in its turn, with a flag that says whether it stands in the section.
Entry scanned(const std::vector<std::string>& lines) {
    const auto holds = [](const std::string& line, const char* marker) {
        return line.find(marker) != std::string::npos;
    };
    Entry entry;
    bool inSection = false;
    for (const std::string& line : lines) {
        if (holds(line, "<UserLibrary>")) {
            inSection = true;
        }
        if (holds(line, "</UserLibrary>")) {
            inSection = false;
        }
        const std::vector<std::string> pieces = piecesBetweenQuotes(line);
        if (holds(line, "<ProjectName Value=") && inSection && pieces.size() == 3) {
            entry.name = pieces[1];
        }
        if (holds(line, "<ProjectPath Value=") && inSection && pieces.size() == 3) {
            entry.parent = pieces[1];
        }
    }
    return entry;
}

std::string described(const std::optional<std::string_view>& value) {
    return value ? "\"" + std::string(*value) + "\"" : "nothing";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const std::string text = morvella::fuzz::textOf(data, size);
    const std::optional<std::u32string> characters = decoded(text);
    requireEqual(morvella::isUtf8(text), characters.has_value(), "whether the text is UTF-8");
    if (!characters) {
        return 0;
    }
    const morvella::UserLibraryEntry actual = morvella::scanLibraryCfg(text);
    const Entry expected = scanned(linesOf(*characters));
    requireEqual(described(actual.name), described(expected.name), "the name");
    requireEqual(described(actual.parent), described(expected.parent), "the parent");
    size_t units = 0;
    for (const char32_t character : *characters) {
        units += character < 0x10000 ? 1 : 2;
    }
    requireEqual(morvella::utf16Length(text), units, "the length in UTF-16");
    return 0;
}
