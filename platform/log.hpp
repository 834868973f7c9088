#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/error.hpp"
#include "platform/file_url.hpp"

namespace morvella {

/// Each kind of argument as it appears in a log line.
std::string logText(std::string_view text);
std::string logText(uint32_t number);
std::string logText(const FileUrl& url);
std::string logText(const std::optional<Error>& error);

/// `text` with each "%@" and "%u" replaced by the next of `arguments`. Placeholders inside an
/// argument, or without an argument, are kept as text.
std::string formatLogLine(std::string_view text, const std::vector<std::string>& arguments);

/// The system log.
class Log {
  public:
    virtual ~Log() = default;

    /// Writes one line: `text`, with "%@" standing for a text, URL or error and "%u" for a number.
    template <class... Arguments>
    void operator()(std::string_view text, const Arguments&... arguments) {
        writeLine(formatLogLine(text, {logText(arguments)...}));
    }

  private:
    virtual void writeLine(const std::string& line) = 0;
};

}  // namespace morvella
