#include "platform/file_url.hpp"

#include "platform/paths.hpp"

namespace morvella {

namespace {

std::string resolved(std::string_view path, const FileUrl& base) {
    if (path.starts_with('/')) {
        return std::string(path);
    }
    const std::string& folder = base.path();
    if (base.namesDirectory()) {
        return appendingPathComponent(folder, path);
    }
    return appendingPathComponent(deletingLastPathComponent(folder), path);
}

bool standsForItself(unsigned char byte) {
    const bool alphanumeric = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
                              (byte >= '0' && byte <= '9');
    return alphanumeric || std::string_view("-._~!$&'()*+,=:@/").find(static_cast<char>(byte)) !=
                               std::string_view::npos;
}

std::string percentEncoded(std::string_view path) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (const char character : path) {
        const auto byte = static_cast<unsigned char>(character);
        if (standsForItself(byte)) {
            text += character;
        } else {
            text += '%';
            text += digits[byte / 16];
            text += digits[byte % 16];
        }
    }
    return text;
}

}  // namespace

FileUrl::FileUrl(std::string path, bool namesDirectory)
    : path_(std::move(path)), namesDirectory_(namesDirectory) {
    while (path_.size() > 1 && path_.ends_with('/')) {
        path_.pop_back();
        namesDirectory_ = true;
    }
}

FileUrl FileUrl::file(std::string_view path) {
    return {std::string(path), path == "/"};
}

FileUrl FileUrl::directory(std::string_view path) {
    return {std::string(path), true};
}

FileUrl FileUrl::fileRelativeTo(std::string_view path, const FileUrl& base) {
    return {resolved(path, base), path.ends_with('/')};
}

FileUrl FileUrl::directoryRelativeTo(std::string_view path, const FileUrl& base) {
    return {resolved(path, base), true};
}

std::string FileUrl::absoluteString() const {
    const bool marksDirectory = namesDirectory_ && path_ != "/";
    return "file://" + percentEncoded(path_) + (marksDirectory ? "/" : "");
}

}  // namespace morvella
