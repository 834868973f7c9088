#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "cocoa/temporary_folder.hpp"
#include "gnustep/texts.hpp"

namespace morvella::gnustep_tests {

namespace {

using cocoa_tests::OrdinaryUser;
using cocoa_tests::TemporaryFolder;

NSFileManager* manager() {
    return [NSFileManager defaultManager];
}

/// The reason that an operation gives; empty if it succeeded. An error comes exactly with a
/// failure.
template <class Operation>
std::string reasonOf(const Operation& operation) {
    NSError* error = untouched();
    const bool done = operation(&error);
    EXPECT_EQ(error == untouched(), done);
    EXPECT_NE(error, nil);
    const std::string reason = done ? "" : text([error localizedDescription]);
    return reason.substr(std::min(reason.size(), reason.rfind(": ") + 2));
}

class FileManagerTest : public ::testing::Test {
  protected:
    std::string copy(const std::string& source, const std::string& target) {
        return reasonOf([&](NSError** error) {
            return [manager() copyItemAtURL:fileUrl(folder.at(source))
                                      toURL:fileUrl(folder.at(target))
                                      error:error];
        });
    }

    std::string move(const std::string& source, const std::string& target) {
        return reasonOf([&](NSError** error) {
            return [manager() moveItemAtURL:fileUrl(folder.at(source))
                                      toURL:fileUrl(folder.at(target))
                                      error:error];
        });
    }

    std::string create(const std::string& path) {
        return reasonOf([&](NSError** error) {
            return [manager() createDirectoryAtURL:folderUrl(folder.at(path))
                       withIntermediateDirectories:YES
                                        attributes:nil
                                             error:error];
        });
    }

    void link(const std::string& name, const std::string& target) {
        ASSERT_EQ(symlink(target.c_str(), folder.at(name).c_str()), 0);
    }

    TemporaryFolder folder;
};

TEST_F(FileManagerTest, CopiesAndMovesUnderAnyName) {
    for (const std::string& name : cocoa_tests::difficultNames()) {
        folder.addFile("from " + name + "/" + name, name);
        EXPECT_EQ(create("to " + name), "");
        EXPECT_EQ(copy("from " + name + "/" + name, "to " + name + "/" + name), "");
        EXPECT_EQ(move("to " + name, "moved " + name), "");
        EXPECT_EQ(folder.contents("moved " + name + "/" + name), name);
        EXPECT_EQ(folder.contents("from " + name + "/" + name), name);
        EXPECT_FALSE(folder.holds("to " + name));
    }
}

TEST_F(FileManagerTest, CopiesAFolderWithItsLinksAndModes) {
    folder.addFile("a/b/file", "x");
    chmod(folder.at("a/b/file").c_str(), 0750);
    link("a/link", "b/file");
    link("a/broken", "nowhere");
    EXPECT_EQ(copy("a", "c"), "");
    EXPECT_EQ(folder.contents("c/b/file"), "x");
    struct stat status;
    ASSERT_EQ(lstat(folder.at("c/b/file").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0750U);
    EXPECT_EQ(std::filesystem::read_symlink(folder.at("c/link")), "b/file");
    EXPECT_EQ(std::filesystem::read_symlink(folder.at("c/broken")), "nowhere");
}

TEST_F(FileManagerTest, NeitherCopiesNorMovesOntoAnything) {
    folder.addFile("file", "new");
    folder.addFile("there", "old");
    folder.addFolder("folder");
    link("broken", folder.at("nowhere"));
    for (const char* target : {"there", "folder", "broken", "file"}) {
        EXPECT_EQ(copy("file", target), "File exists.") << target;
        EXPECT_EQ(move("file", target), "File exists.") << target;
    }
    EXPECT_EQ(folder.contents("there"), "old");
    EXPECT_EQ(folder.contents("file"), "new");
    EXPECT_FALSE(folder.holds("nowhere"));
}

TEST_F(FileManagerTest, SaysWhatIsMissing) {
    folder.addFile("file");
    for (const auto& [source, target] : {std::pair("missing", "x"), std::pair("file", "no/x")}) {
        EXPECT_EQ(copy(source, target), "No such file or directory.");
        EXPECT_EQ(move(source, target), "No such file or directory.");
    }
    EXPECT_EQ(copy("file", "file/x"), "Not a directory.");
}

dev_t diskOf(const std::string& path) {
    struct stat found;
    EXPECT_EQ(stat(path.c_str(), &found), 0) << path;
    return found.st_dev;
}

/// A new folder on another file system than that of `path`; nothing if there is none.
std::string elsewhereThan(const std::string& path) {
    for (const char* parent : {"/dev/shm", "/tmp", "."}) {
        if (diskOf(parent) != diskOf(path)) {
            std::string made = std::string(parent) + "/morvella-XXXXXX";
            EXPECT_NE(mkdtemp(made.data()), nullptr) << made;
            return std::filesystem::absolute(made);
        }
    }
    return "";
}

TEST_F(FileManagerTest, MovesToAnotherFileSystem) {
    const std::string elsewhere = elsewhereThan(folder.path());
    ASSERT_NE(elsewhere, "") << "nothing is shown on one file system";
    folder.addFile("a/b", "x");
    const std::string target = elsewhere + "/a";
    EXPECT_TRUE([manager() moveItemAtURL:fileUrl(folder.at("a")) toURL:fileUrl(target) error:NULL]);
    EXPECT_FALSE(folder.holds("a"));
    EXPECT_TRUE(std::filesystem::is_regular_file(target + "/b"));
    std::filesystem::remove_all(elsewhere);
}

TEST_F(FileManagerTest, CreatesAFolderWithThoseAboveOrFindsItThere) {
    EXPECT_EQ(create("a/b/c"), "");
    EXPECT_EQ(create("a/b/c"), "");
    EXPECT_TRUE(folder.holds("a/b/c"));
    link("link", "a");
    EXPECT_EQ(create("link"), "");
    EXPECT_EQ(create("link/d"), "");
    EXPECT_TRUE(folder.holds("a/d"));
}

TEST_F(FileManagerTest, CreatesNoFolderInTheWayOfSomethingElse) {
    folder.addFile("file", "x");
    EXPECT_EQ(create("file"), "Not a directory.");
    EXPECT_EQ(create("file/below"), "Not a directory.");
    link("broken", folder.at("nowhere"));
    EXPECT_EQ(create("broken"), "File exists.");
    EXPECT_FALSE(folder.holds("nowhere"));
    EXPECT_EQ(folder.contents("file"), "x");
}

TEST_F(FileManagerTest, ChangesNothingInAFolderThatCannotBeWritten) {
    folder.addFile("closed/file", "x");
    chmod(folder.path().c_str(), 0755);
    chmod(folder.at("closed").c_str(), 0555);
    const OrdinaryUser user;
    EXPECT_EQ(create("closed/new"), "Permission denied.");
    EXPECT_EQ(copy("closed/file", "closed/copy"), "Permission denied.");
    EXPECT_EQ(move("closed/file", "closed/moved"), "Permission denied.");
}

/// The names in a folder, sorted; the reason if there are none.
std::vector<std::string> listed(const std::string& path) {
    NSArray* names = nil;
    const std::string reason = reasonOf([&](NSError** error) {
        names = [manager() contentsOfDirectoryAtPath:string(path) error:error];
        return names != nil;
    });
    if (!reason.empty()) {
        return {reason};
    }
    std::vector<std::string> found;
    for (NSString* name in names) {
        found.push_back(text(name));
    }
    std::sort(found.begin(), found.end());
    return found;
}

TEST_F(FileManagerTest, ListsEveryNameButThoseThatAreNotUtf8) {
    EXPECT_EQ(listed(folder.path()), std::vector<std::string>());
    std::vector<std::string> names = cocoa_tests::difficultNames();
    for (const std::string& name : names) {
        folder.addFile(name);
    }
    folder.addFile("\xFF\xFE");
    std::sort(names.begin(), names.end());
    EXPECT_EQ(listed(folder.path()), names);
}

TEST_F(FileManagerTest, SaysWhyNothingIsListed) {
    folder.addFile("file");
    folder.addFolder("closed");
    chmod(folder.at("closed").c_str(), 0311);
    EXPECT_EQ(listed(folder.at("missing")), std::vector<std::string>{"No such file or directory."});
    EXPECT_EQ(listed(folder.at("file")), std::vector<std::string>{"Not a directory."});
    const OrdinaryUser user;
    EXPECT_EQ(listed(folder.at("closed")), std::vector<std::string>{"Permission denied."});
}

/// Names a stage as long as it lives.
class Stage {
  public:
    explicit Stage(const char* path) {
        if (path) {
            setenv("MORVELLA_STAGE", path, 1);
        } else {
            unsetenv("MORVELLA_STAGE");
        }
    }
    ~Stage() { unsetenv("MORVELLA_STAGE"); }
};

std::string urlOf(NSSearchPathDirectory directory, NSSearchPathDomainMask domain) {
    return text([[manager() URLForDirectory:directory
                                   inDomain:domain
                          appropriateForURL:nil
                                     create:NO
                                      error:NULL] absoluteString]);
}

TEST(StandardFolderTest, LieOnTheStageAndInItsHome) {
    const Stage stage("/a stage");
    const char* home = std::getenv("HOME");
    ASSERT_NE(home, nullptr);
    EXPECT_EQ(urlOf(NSApplicationDirectory, NSLocalDomainMask), "file:///a%20stage/Applications/");
    EXPECT_EQ(urlOf(NSUserDirectory, NSLocalDomainMask), "file:///a%20stage/Users/");
    EXPECT_EQ(urlOf(NSDocumentDirectory, NSUserDomainMask),
              "file://" + std::string(home) + "/Documents/");
    EXPECT_EQ([[manager() URLsForDirectory:NSUserDirectory inDomains:NSLocalDomainMask] count], 1U);
}

TEST(StandardFolderTest, AreNotTheMachinesOwnWithoutAStage) {
    for (const char* name : {static_cast<const char*>(nullptr), ""}) {
        const Stage stage(name);
        EXPECT_EQ(urlOf(NSApplicationDirectory, NSLocalDomainMask), "(nil)");
        EXPECT_EQ(urlOf(NSUserDirectory, NSLocalDomainMask), "(nil)");
        NSError* error = untouched();
        [manager() URLForDirectory:NSUserDirectory
                          inDomain:NSLocalDomainMask
                 appropriateForURL:nil
                            create:NO
                             error:&error];
        EXPECT_NE(error, untouched());
    }
}

}  // namespace

}  // namespace morvella::gnustep_tests
