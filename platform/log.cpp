#include "platform/log.hpp"

namespace morvella {

std::string logText(std::string_view text) {
    return std::string(text);
}

std::string logText(uint32_t number) {
    return std::to_string(number);
}

std::string logText(const FileUrl& url) {
    return url.absoluteString();
}

std::string logText(const std::optional<Error>& error) {
    return error ? error->description : "(null)";
}

std::string formatLogLine(std::string_view text, const std::vector<std::string>& arguments) {
    std::string line;
    auto argument = arguments.begin();
    for (size_t i = 0; i < text.size(); ++i) {
        const std::string_view placeholder = text.substr(i, 2);
        if (argument != arguments.end() && (placeholder == "%@" || placeholder == "%u")) {
            line += *argument++;
            ++i;
        } else {
            line += text[i];
        }
    }
    return line;
}

}  // namespace morvella
