#pragma once

#include <string>

/// Both throw std::runtime_error when they cannot go on, and change the current folder and the
/// locale: they are the one thing that a process does.
namespace morvella {

/// Packs `folder`, a folder or a link to one, into a zip archive whose single top-level entry is
/// that folder under its own name. An archive that exists at `zipPath` is replaced. Permissions,
/// times of the last change, links and empty folders are packed too; extended attributes are not.
///
/// All of `folder` is packed or nothing: the archive is written under a longer name beside
/// `zipPath` and gets its name last. Only a kill can leave the longer name.
void pack(const std::string& folder, const std::string& zipPath);

/// Unpacks the zip archive at `archivePath` into the folder `destination`, which is made if it is
/// missing, and names the archive in one line on standard error.
///
/// Nothing is ever written outside `destination`: an entry that is absolute, has a ".." in its path
/// or leads through a symbolic link is refused. Such an entry, or one that cannot be written whole,
/// is left out and named on standard error, and the others are still unpacked; the result is then
/// false. Existing files and links are replaced, never written through. "__MACOSX" folders and "._"
/// files are left out.
bool unpack(const std::string& archivePath, const std::string& destination);

}  // namespace morvella
