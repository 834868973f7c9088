#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/platform.hpp"

namespace morvella {

/// The status values of `getUserLibraryErrorInt`.
namespace user_library_status {
constexpr int32_t found = 0;
constexpr int32_t noConfiguration = 1;
constexpr int32_t notReachable = 2;
constexpr int32_t undecided = 3;
constexpr int32_t noEntry = 4;
}  // namespace user_library_status

/// Looks up Live's preferences folders and the User Library that they name. Stateless; main thread
/// only. The lower-case class name is part of the interface and is kept as it is. All paths are
/// absolute; a function that finds nothing returns nothing.
class getLiveUserLib {
  public:
    explicit getLiveUserLib(const Platform& platform) : platform_(platform) {}

    // live/preference_folder.cpp. Not called by the installer.
    /// The preferences folder of the latest version of Live in the current user's home folder.
    [[nodiscard]] std::optional<std::string> getLatestPreferenceFolder() const;
    /// The preferences folder of that version in the current user's home folder; it need not exist.
    [[nodiscard]] std::string getPreferenceFolderUsingVersionIdentifier(
        const std::string& version) const;
    /// The preferences folder of the latest version of Live below `homeDirectory`. Among equal
    /// versions, the one that the system lists first wins.
    [[nodiscard]] std::optional<std::string> getLatestPreferenceFolderUsingHomeDirectory(
        const std::string& homeDirectory) const;

    // live/user_library.cpp
    /// The User Library named in the `Library.cfg` in `preferenceFolder`. Writes the status to
    /// `errorInt`; a path is returned for `found` and for `notReachable`.
    std::optional<std::string> getUserLibraryErrorInt(const std::string& preferenceFolder,
                                                      int32_t* errorInt) const;

  private:
    Platform platform_;
};

}  // namespace morvella
