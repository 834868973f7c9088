#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>

#include "fuzz.hpp"
#include "platform/file_url.hpp"

namespace {

using morvella::FileUrl;
using morvella::fuzz::require;
using morvella::fuzz::requireEqual;

/// Every byte is written out, one by one.
std::string encoded(const std::string& path) {
    std::string text;
    for (const char character : path) {
        const char* const plain =
            "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~!$&'()*+,=:@/";
        if (character != '\0' && std::strchr(plain, character) != nullptr) {
            text += character;
        } else {
            char code[4];
            std::snprintf(code, sizeof code, "%%%02X", static_cast<unsigned char>(character));
            text += code;
        }
    }
    return text;
}

std::string decoded(const std::string& text) {
    std::string path;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%') {
            path += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            path += text[i];
        }
    }
    return path;
}

std::string trimmed(std::string path) {
    while (path.size() > 1 && path.back() == '/') {
        path.pop_back();
    }
    return path;
}

std::string withoutSlashesInARow(std::string path) {
    for (size_t at = path.find("//"); at != std::string::npos; at = path.find("//")) {
        path.erase(at, 1);
    }
    return path;
}

/// Joined by the standard library's rules for paths.
std::string resolved(const std::string& path, const FileUrl& base) {
    const std::filesystem::path folder(base.path());
    const std::filesystem::path above = base.namesDirectory() ? folder : folder.parent_path();
    return trimmed(path.starts_with('/') ? path : withoutSlashesInARow((above / path).string()));
}

void checkUrl(const FileUrl& url, const std::string& path, bool namesDirectory) {
    const bool endsInSlash = path.size() > 1 && path.back() == '/';
    requireEqual(url.path(), trimmed(path), "the path");
    requireEqual(url.namesDirectory(), namesDirectory || endsInSlash, "whether it is a directory");
    const bool marked = url.namesDirectory() && url.path() != "/";
    const std::string text = url.absoluteString();
    requireEqual(text, "file://" + encoded(url.path()) + (marked ? "/" : ""), "the URL's text");
    requireEqual(decoded(text.substr(7)), url.path() + (marked ? "/" : ""), "the text's path");
}

}  // namespace

/// The first line of the input is a path, the second one is the path of a base.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const std::string text = morvella::fuzz::textOf(data, size);
    const size_t lineEnd = text.find('\n');
    const std::string path = text.substr(0, lineEnd);
    const std::string basePath = lineEnd == std::string::npos ? "" : text.substr(lineEnd + 1);

    checkUrl(FileUrl::file(path), path, path == "/");
    checkUrl(FileUrl::directory(path), path, true);
    for (const FileUrl& base : {FileUrl::file(basePath), FileUrl::directory(basePath)}) {
        const std::string expected = resolved(path, base);
        requireEqual(FileUrl::fileRelativeTo(path, base).path(), expected, "the resolved file");
        requireEqual(FileUrl::directoryRelativeTo(path, base).path(), expected,
                     "the resolved folder");
        require(FileUrl::directoryRelativeTo(path, base).namesDirectory(),
                "a folder does not name a directory");
    }
    return 0;
}
