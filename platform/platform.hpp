#pragma once

#include "platform/bundle.hpp"
#include "platform/controls.hpp"
#include "platform/files.hpp"
#include "platform/log.hpp"
#include "platform/system.hpp"
#include "platform/user_defaults.hpp"
#include "platform/window.hpp"

namespace morvella {

/// Everything that the system provides. All of it outlives the controller and is used on the main
/// thread only.
struct Platform {
    Application& application;
    Bundles& bundles;
    Clock& clock;
    ControlFactory& controls;
    FileChanges& fileChanges;
    Files& files;
    Log& log;
    RunLoop& runLoop;
    StandardFolders& folders;
    TaskRunner& tasks;
    UserDefaultsSuites& userDefaults;
};

}  // namespace morvella
