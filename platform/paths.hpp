#pragma once

#include <string>
#include <string_view>

/// Paths are UTF-8 text, kept byte for byte; these functions follow Foundation's rules for them.
namespace morvella {

/// `path` and `component` with a slash between them. Several slashes in a row become one, and none
/// stays at the end. An empty `path` gives the component alone.
std::string appendingPathComponent(std::string_view path, std::string_view component);

/// `path` without its last component and the slash before it; "/" stays "/".
std::string deletingLastPathComponent(std::string_view path);

/// The text after the last "." of the last component; empty if there is none, if nothing stands
/// before that ".", or if the text holds a blank. Slashes at the end of `path` do not count.
std::string_view pathExtension(std::string_view path);

/// The pieces of `text` between the occurrences of `separator`, one more than there are of these.
/// The pieces are empty where two separators meet. `separator` is not empty. Each is a view of
/// `text`.
template <class Pieces>
Pieces componentsSeparatedBy(std::string_view text, std::string_view separator) {
    Pieces pieces;
    for (size_t start = 0;;) {
        const size_t end = text.find(separator, start);
        pieces.push_back(text.substr(start, end - start));
        if (end == std::string_view::npos) {
            return pieces;
        }
        start = end + separator.size();
    }
}

}  // namespace morvella
