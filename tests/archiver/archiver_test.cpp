#include "archiver_test.hpp"

#include <fcntl.h>
#include <grp.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace morvella {
namespace {

constexpr uid_t ordinaryUser = 65534;

fs::path makeFolder() {
    std::string name = (fs::temp_directory_path() / "archiver-test.XXXXXX").string();
    if (!mkdtemp(name.data())) {
        throw std::runtime_error("no temporary folder");
    }
    fs::permissions(name, fs::perms{0755});
    return name;
}

void limit(auto resource, rlim_t most) {
    const rlimit both{most, most};
    if (setrlimit(resource, &both) != 0) {
        _exit(126);
    }
}

void redirect(const fs::path& path, int descriptor) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (file < 0 || dup2(file, descriptor) < 0) {
        _exit(126);
    }
}

/// Meets the conditions in the child process or ends it.
void enter(const Conditions& conditions) {
    // One that runs on for ever must not outlive the test.
    limit(RLIMIT_CPU, 60);
    if (conditions.largestFile >= 0) {
        limit(RLIMIT_FSIZE, static_cast<rlim_t>(conditions.largestFile));
    }
    if (chdir(conditions.workingFolder.c_str()) != 0) {
        _exit(126);
    }
    if (conditions.asOrdinaryUser && geteuid() == 0 &&
        (setgroups(0, nullptr) != 0 || setgid(ordinaryUser) != 0 || setuid(ordinaryUser) != 0)) {
        _exit(126);
    }
}

}  // namespace

std::vector<std::string> unpackArguments(const fs::path& archive, const fs::path& destination) {
    return {"-v", "-x", "-k", archive, destination};
}

std::vector<std::string> packArguments(const fs::path& source, const fs::path& zip) {
    return {"-c", "-k", "--sequesterRsrc", "--keepParent", source, zip};
}

ArchiverTest::ArchiverTest() : folder(makeFolder()) {
    fs::create_directories(destination);
    fs::create_directories(folder / "log");
}

ArchiverTest::~ArchiverTest() {
    const auto options = fs::directory_options::skip_permission_denied;
    for (const auto& entry : fs::recursive_directory_iterator(folder, options)) {
        if (entry.is_directory() && !entry.is_symlink()) {
            fs::permissions(entry.path(), fs::perms::owner_all, fs::perm_options::add);
        }
    }
    fs::remove_all(folder);
}

Outcome ArchiverTest::unpack(const fs::path& zip, const Conditions& conditions) const {
    return run(unpackArguments(zip, destination), conditions);
}

Outcome ArchiverTest::pack(const fs::path& source, const fs::path& zip,
                           const Conditions& conditions) const {
    return run(packArguments(source, zip), conditions);
}

Outcome ArchiverTest::run(const std::vector<std::string>& arguments,
                          const Conditions& conditions) const {
    return finish(start(arguments, conditions));
}

pid_t ArchiverTest::start(const std::vector<std::string>& arguments,
                          const Conditions& conditions) const {
    const fs::path output = folder / "log" / "output";
    const fs::path errors = folder / "log" / "errors";
    std::vector<char*> values{const_cast<char*>(DITTO)};
    for (const std::string& argument : arguments) {
        values.push_back(const_cast<char*>(argument.c_str()));
    }
    values.push_back(nullptr);
    // Opened as whoever runs the test: an ordinary user may not get as far as the build folder.
    const int executable = open(DITTO, O_RDONLY | O_CLOEXEC);
    const pid_t process = fork();
    if (process == 0) {
        redirect(output, STDOUT_FILENO);
        redirect(errors, STDERR_FILENO);
        enter(conditions);
        fexecve(executable, values.data(), environ);
        _exit(127);
    }
    close(executable);
    return process;
}

Outcome ArchiverTest::finish(pid_t process) const {
    int status = 0;
    if (waitpid(process, &status, 0) != process) {
        throw std::runtime_error("no such child");
    }
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status),
            contentsOf(folder / "log" / "output"), contentsOf(folder / "log" / "errors")};
}

void ArchiverTest::giveToOrdinaryUser(const fs::path& path) {
    if (geteuid() != 0) {
        return;
    }
    const auto give = [](const fs::path& each) {
        if (lchown(each.c_str(), ordinaryUser, ordinaryUser) != 0) {
            throw std::runtime_error("cannot give " + each.string());
        }
    };
    give(path);
    for (const auto& entry : fs::recursive_directory_iterator(path)) {
        give(entry.path());
    }
}

Snapshot ArchiverTest::snapshot(const fs::path& top) {
    Snapshot found;
    for (const auto& entry : fs::recursive_directory_iterator(top)) {
        struct stat state {};
        if (lstat(entry.path().c_str(), &state) != 0) {
            throw std::runtime_error("cannot look at " + entry.path().string());
        }
        std::ostringstream line;
        line << std::oct << state.st_mode << std::dec << " at " << state.st_mtime;
        if (entry.is_symlink()) {
            line << " to " << fs::read_symlink(entry.path()).string();
        } else if (entry.is_regular_file()) {
            line << " holds " << contentsOf(entry.path());
        }
        found[entry.path().lexically_relative(top)] = line.str();
    }
    return found;
}

Snapshot ArchiverTest::outside() const {
    Snapshot all = snapshot(folder);
    std::erase_if(all, [](const auto& item) {
        const std::string top = *fs::path(item.first).begin();
        return top == "destination" || top == "log";
    });
    return all;
}

bool ArchiverTest::eventually(const std::function<bool()>& holds) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!holds()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

}  // namespace morvella
