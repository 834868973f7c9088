#pragma once

#include <memory>
#include <string>

#include "platform/object.hpp"

namespace morvella {

class Application {
  public:
    virtual ~Application() = default;

    /// Ends the application; what is scheduled is not run any more. `sender` may be null.
    virtual void terminate(const Object* sender) = 0;

    /// Keeps the Mac awake and the application at full speed until the last copy of the result is
    /// gone. Activities may overlap. `reason` is for the system's diagnostics.
    [[nodiscard]] virtual std::shared_ptr<void> beginActivity(const std::string& reason) = 0;

    /// Has assistive technology such as VoiceOver say `text`.
    virtual void announce(const std::string& text) = 0;
};

class Workspace {
  public:
    virtual ~Workspace() = default;

    /// Asks the system to open the document at `path` with the application at `application`, given
    /// by its bundle or by an executable inside of it. False if the system refused.
    virtual bool openFile(const std::string& path, const std::string& application) = 0;
};

}  // namespace morvella
