#pragma once

#include <array>

/// What the product's pieces are called.
namespace morvella::product {

/// The folder that receives a part of the product: in the User Library, the Applications folder,
/// the shared folder and the Documents folder.
inline constexpr const char* folder = "Morvella";

inline constexpr std::array fonts = {"Archivo-Medium.ttf", "OpenSans-Regular.ttf"};
inline constexpr const char* suiteArchive = "morvella.zip";
inline constexpr std::array utilityArchives = {"Tressimo.zip"};
inline constexpr std::array shaderArchives = {"ISF.zip"};

}  // namespace morvella::product
