#pragma once

#include <array>

/// What the product's pieces are called.
namespace morvella::product {

/// As the welcome page shows it. The number is the build's.
inline constexpr const char* version = "v" MORVELLA_VERSION;

/// The folder that receives a part of the product: in the User Library, the Applications folder,
/// the shared folder and the Documents folder.
inline constexpr const char* folder = "Morvella";

inline constexpr const char* licenseDocument = "license.rtf";
inline constexpr std::array fonts = {"Archivo-Medium.ttf", "OpenSans-Regular.ttf"};
inline constexpr const char* suiteArchive = "morvella.zip";
inline constexpr std::array utilityArchives = {"Tressimo.zip"};
inline constexpr std::array shaderArchives = {"ISF.zip"};

/// Obsolete items below the suite's folder, which an update removes. None in this version.
inline constexpr std::array<const char*, 0> obsoleteItems = {};

/// The suite's application in its folder, as it is unpacked and as it is hidden.
inline constexpr const char* application = "Morvella.app";
inline constexpr const char* hiddenApplication = ".Morvella.app";
/// A device that proves, below the suite's folder, that all of it was unpacked.
inline constexpr const char* device = "Sources/Vellicor.amxd";

/// Where the shaders lie in the product's folder, and their own folders in there.
inline constexpr const char* shaderFolder = "ISF";
inline constexpr std::array shaderSubfolders = {"Dariwent", "Standard"};

/// Below the folder of the Live Set that starts the installer.
inline constexpr const char* demoSet = "Morvella Basic Demo Project/Morvella Basic Demo.als";

}  // namespace morvella::product
