#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "zip_file.hpp"

namespace morvella {

namespace fs = std::filesystem;

/// What a run of the archiver came to.
struct Outcome {
    int status;  ///< The exit status, or minus the signal that ended it.
    std::string output;
    std::string errors;
};

/// Under what conditions the archiver runs.
struct Conditions {
    bool asOrdinaryUser = false;  ///< Not as root, whom no permission stops.
    long largestFile = -1;        ///< No file may grow beyond so many bytes; negative for no limit.
    fs::path workingFolder = "/";
};

/// A folder's contents by relative path: kind, permissions, time of the last change and contents,
/// in one line.
using Snapshot = std::map<std::string, std::string>;

/// Runs the real archiver on a temporary folder of the test's own.
class ArchiverTest : public ::testing::Test {
  protected:
    ArchiverTest();
    ~ArchiverTest() override;

    Outcome unpack(const fs::path& zip, const Conditions& conditions = {}) const;
    Outcome pack(const fs::path& source, const fs::path& zip,
                 const Conditions& conditions = {}) const;
    Outcome run(const std::vector<std::string>& arguments, const Conditions& conditions = {}) const;

    /// Starts the archiver and returns its process at once. `finish` waits for it.
    pid_t start(const std::vector<std::string>& arguments, const Conditions& conditions = {}) const;
    Outcome finish(pid_t process) const;

    /// Makes everything at `path` belong to the ordinary user.
    static void giveToOrdinaryUser(const fs::path& path);
    static Snapshot snapshot(const fs::path& top);
    /// Everything but the destination.
    Snapshot outside() const;
    /// Polls until `holds`; false after a generous deadline.
    static bool eventually(const std::function<bool()>& holds);

    const fs::path folder;
    const fs::path destination = folder / "destination";
    const fs::path archive = folder / "archive.zip";
};

std::vector<std::string> unpackArguments(const fs::path& archive, const fs::path& destination);
std::vector<std::string> packArguments(const fs::path& source, const fs::path& zip);

}  // namespace morvella
