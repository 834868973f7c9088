#pragma once

#include <string>
#include <string_view>

/// Paths are UTF-8 text, kept byte for byte; these functions follow Foundation's rules for them.
namespace morvella {

/// `path` and `component` with a slash between them. Consecutive slashes become one, and trailing
/// slashes are dropped. An empty `path` gives the component alone.
std::string appendingPathComponent(std::string_view path, std::string_view component);

/// `path` without its last component and the slash before it; "/" stays "/".
std::string deletingLastPathComponent(std::string_view path);

/// The text after the last "." of the last component; empty if there is none, if nothing precedes
/// that ".", or if the text contains a space. Ignores trailing slashes of `path`.
std::string_view pathExtension(std::string_view path);

}  // namespace morvella
