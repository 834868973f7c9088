#pragma once

#include <string>

/// Lines of the journal that many tests expect, named after what the installer does. None ends in a
/// newline; some are several lines. `lines({...})` and `expectEffects({...})` take them.
namespace morvella::tests {

std::string logs(const std::string& text);

std::string unpacks(const std::string& archive, const std::string& folder);
std::string packs(const std::string& folder, const std::string& zipFile,
                  const std::string& directory);

/// For all of the product's fonts: copies them if missing, keeps them if present.
std::string copiesFonts();
std::string keepsFonts();
/// Copies the font at `source` to `target`.
std::string copiesFont(const std::string& source, const std::string& target);

std::string createsFolder(const std::string& path);
std::string trashes(const std::string& path);
/// Moves the folder at `path` to the Trash, and logs it.
std::string deletesFolder(const std::string& path);
std::string failsToTrashFolder(const std::string& path);

/// Creates the utility application's folder and unpacks the application into it.
std::string installsUtilities();

/// Only the sheet.
std::string criticalSheet(const std::string& message);
/// Brings the window to the front, logs, and shows the sheet.
std::string showsCriticalSheet(const std::string& message);
std::string reachesUnknownState();
/// What follows the answer to a critical sheet.
std::string quits();

std::string fillsLicence();
std::string offersDemoSet();
std::string withholdsDemoSet();
std::string showsVersion();
std::string startsIndicator();
std::string showsLastPage();

}  // namespace morvella::tests
