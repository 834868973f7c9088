#pragma once

#include <string>

namespace morvella {

/// Packs `folder`, a folder or a link to one, into a zip archive whose single top-level entry is
/// that folder under its own name. An archive that exists at `zipPath` is replaced. Permissions,
/// times of the last change, links and empty folders are packed too; extended attributes are not.
///
/// A file at `zipPath` is always a complete archive: it is written under a longer name beside
/// `zipPath` and gets its name last. A failure leaves nothing behind; only a kill can leave the
/// longer name.
///
/// Throws std::runtime_error when anything in `folder` cannot be packed, or the archive not be
/// written. Changes the current folder and the locale.
void pack(const std::string& folder, const std::string& zipPath);

}  // namespace morvella
