#include "cocoa/temporary_folder.hpp"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace morvella::cocoa_tests {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder()
    : path_((fs::canonical(fs::temp_directory_path()) / "morvella-XXXXXX").string()) {
    if (!mkdtemp(path_.data())) {
        throw std::runtime_error("cannot create a temporary folder at " + path_);
    }
    // Accessible in tests that run as an ordinary user.
    fs::permissions(path_, fs::perms(0755));
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    const auto options = fs::directory_options::skip_permission_denied;
    for (const auto& entry : fs::recursive_directory_iterator(path_, options, ignored)) {
        if (fs::is_directory(entry.symlink_status(ignored))) {
            fs::permissions(entry.path(), fs::perms::owner_all, fs::perm_options::add, ignored);
        }
    }
    fs::remove_all(path_, ignored);
}

void TemporaryFolder::addFolder(const std::string& relative) const {
    fs::create_directories(at(relative));
}

void TemporaryFolder::addFile(const std::string& relative, const std::string& contents) const {
    fs::create_directories(fs::path(at(relative)).parent_path());
    std::ofstream(at(relative), std::ios::binary) << contents;
}

bool TemporaryFolder::holds(const std::string& relative) const {
    return fs::exists(fs::symlink_status(at(relative)));
}

std::string TemporaryFolder::contents(const std::string& relative) const {
    std::ifstream file(at(relative), std::ios::binary);
    return file && fs::is_regular_file(at(relative))
               ? std::string(std::istreambuf_iterator<char>(file), {})
               : "(no file)";
}

std::vector<std::string> TemporaryFolder::tree(const std::string& relative) const {
    const fs::path root(at(relative));
    std::vector<std::string> found;
    if (!fs::is_directory(root)) {
        return {"(no folder)"};
    }
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const std::string name = entry.path().lexically_relative(root).string();
        found.push_back(entry.is_directory() ? name + "/"
                                             : name + ": " + contents(relative + "/" + name));
    }
    std::sort(found.begin(), found.end());
    return found;
}

// Permission queries use the real user, file operations the effective one. The saved user stays
// root, so that the destructor can switch back.
OrdinaryUser::OrdinaryUser() : wasRoot_(geteuid() == 0) {
    constexpr uid_t nobody = 65534;
    if (wasRoot_ && (setreuid(nobody, static_cast<uid_t>(-1)) != 0 || seteuid(nobody) != 0)) {
        throw std::runtime_error("root cannot become an ordinary user");
    }
}

OrdinaryUser::~OrdinaryUser() {
    if (wasRoot_ && (seteuid(0) != 0 || setreuid(0, static_cast<uid_t>(-1)) != 0)) {
        std::terminate();
    }
}

std::vector<std::string> difficultNames() {
    return {" blanks at the ends ",
            "\"double\" and 'single' quotes",
            "100% of %@ and %n",
            "%20",
            "a#b?c;d&e=f",
            "back\\slash",
            "$HOME `id` $(id) *",
            "-x",
            "~",
            "u\xCC\x88 decomposed",
            "\xF0\x9F\x8E\xB9 keyboard",
            "line\nbreak",
            ".hidden",
            "ends.in.app"};
}

}  // namespace morvella::cocoa_tests
