#include "platform/cocoa/cocoa_platform.h"

#include "platform/cocoa/bundle.h"
#include "platform/cocoa/controls.h"
#include "platform/cocoa/files.h"
#include "platform/cocoa/log.h"
#include "platform/cocoa/system.h"
#include "platform/cocoa/user_defaults.h"

namespace morvella {

const Platform& cocoaPlatform() {
    static CocoaApplication application;
    static CocoaBundles bundles;
    static CocoaClock clock;
    static CocoaControlFactory controls;
    static CocoaFileChanges fileChanges;
    static CocoaFiles files;
    static CocoaLog log;
    static CocoaRunLoop runLoop;
    static CocoaStandardFolders folders;
    static CocoaTaskRunner tasks;
    static CocoaUserDefaultsSuites userDefaults;
    static const Platform platform{
        .application = application,
        .bundles = bundles,
        .clock = clock,
        .controls = controls,
        .fileChanges = fileChanges,
        .files = files,
        .log = log,
        .runLoop = runLoop,
        .folders = folders,
        .tasks = tasks,
        .userDefaults = userDefaults,
    };
    return platform;
}

}  // namespace morvella
