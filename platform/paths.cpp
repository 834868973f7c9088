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
    if (path.empty()) {
        return std::string(withoutFinalSlashes(component));
    }
    while (component.starts_with('/')) {
        component.remove_prefix(1);
    }
    std::string joined(withoutFinalSlashes(path));
    if (!component.empty()) {
        if (!joined.ends_with('/')) {
            joined += '/';
        }
        joined += withoutFinalSlashes(component);
    }
    return joined;
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
    return name.substr(dot + 1);
}

}  // namespace morvella
