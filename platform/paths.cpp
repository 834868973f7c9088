#include "platform/paths.hpp"

namespace morvella {

namespace {

std::string_view withoutFinalSlashes(std::string_view path) {
    while (path.size() > 1 && path.ends_with('/')) {
        path.remove_suffix(1);
    }
    return path;
}

}  // namespace

std::string appendingPathComponent(std::string_view path, std::string_view component) {
    std::string joined;
    const auto append = [&joined](std::string_view part) {
        for (const char character : part) {
            if (character != '/' || !joined.ends_with('/')) {
                joined += character;
            }
        }
    };
    append(path);
    if (!path.empty()) {
        append("/");
    }
    append(component);
    return std::string(withoutFinalSlashes(joined));
}

std::string deletingLastPathComponent(std::string_view path) {
    path = withoutFinalSlashes(path);
    const size_t slash = path.rfind('/');
    if (slash == std::string_view::npos) {
        return "";
    }
    return std::string(withoutFinalSlashes(path.substr(0, slash == 0 ? 1 : slash)));
}

std::string_view pathExtension(std::string_view path) {
    path = withoutFinalSlashes(path);
    const std::string_view name = path.substr(path.rfind('/') + 1);
    const size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0) {
        return {};
    }
    const std::string_view extension = name.substr(dot + 1);
    return extension.find(' ') == std::string_view::npos ? extension : std::string_view{};
}

}  // namespace morvella
