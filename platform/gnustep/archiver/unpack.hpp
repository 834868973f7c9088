#pragma once

#include <string>

namespace morvella {

/// Unpacks the zip archive at `archivePath` into the folder `destination`, which is made if it is
/// missing, and names the archive in one line on standard error.
///
/// Nothing is ever written outside `destination`: an entry that is absolute, has a ".." in its path
/// or leads through a symbolic link is refused. Such an entry, or one that cannot be written whole,
/// is left out and named on standard error, and the others are still unpacked; the result is then
/// false. Existing files and links are replaced, never written through. "__MACOSX" folders and "._"
/// files are left out.
///
/// Throws std::runtime_error when the archive cannot be read any further or `destination` not be
/// used. Changes the current folder and the locale.
bool unpack(const std::string& archivePath, const std::string& destination);

}  // namespace morvella
