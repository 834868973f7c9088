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

}  // namespace morvella
