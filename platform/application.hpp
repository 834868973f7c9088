#pragma once

#include <string>

#include "platform/object.hpp"

namespace morvella {

class Application {
  public:
    virtual ~Application() = default;

    /// Ends the application; what is scheduled is not run any more. `sender` may be null.
    virtual void terminate(const Object* sender) = 0;
};

class Workspace {
  public:
    virtual ~Workspace() = default;

    /// Asks the system to open the document at `path` with the application at `application`, given
    /// by its bundle or by an executable inside of it. False if the system refused.
    virtual bool openFile(const std::string& path, const std::string& application) = 0;
};

}  // namespace morvella
