#pragma once

#import <Foundation/Foundation.h>

#include "platform/log.hpp"

namespace morvella {

/// Writes one line to the system's log and to standard error. If standard error is a pipe or socket
/// whose reader has exited or stalled, the line may be lost there and the installer continues.
void writeLogLine(NSString* line);

class CocoaLog : public Log {
  private:
    void writeLine(const std::string& line) override;
};

}  // namespace morvella
