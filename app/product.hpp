#pragma once

#include <array>

/// Names of the product's files and folders.
namespace morvella::product {

/// As shown on the welcome page. The number comes from the build.
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

/// The name of the application in the suite's folder, when unpacked and when hidden.
inline constexpr const char* application = "Morvella.app";
inline constexpr const char* hiddenApplication = ".Morvella.app";
/// A device below the suite's folder. If it is present, the whole suite was unpacked.
inline constexpr const char* device = "Sources/Vellicor.amxd";

/// The shaders' folder in the product's folder, and its subfolders.
inline constexpr const char* shaderFolder = "ISF";
inline constexpr std::array shaderSubfolders = {"Dariwent", "Standard"};

/// Relative to the folder of the Live Set that starts the installer.
inline constexpr const char* demoSet = "Morvella Basic Demo Project/Morvella Basic Demo.als";

}  // namespace morvella::product
