#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

/// The last stage: the shader files. The journal is cleared when it begins.
class SharedDataTest : public InstallerTest {
  protected:
    SharedDataTest() {
        useUserLibrary();
        disk.addFolder("/Users/Shared");
        disk.addFolder("/Users/ann/Documents");
        journal.watcher = [this](const std::string& line) {
            if (line == "asked: the users folder of the machine") {
                journal.clear();
            }
        };
    }

    void install() { controller.installTo(FileUrl::directory("/ignored")); }

    static std::string cannotCreate(const std::string& path, const std::string& error) {
        return createsFolder(path) + "\n" +
               logs("Couldn't create shared folder(file://" + path + "/), error:" + error);
    }

    static std::string installsTo(const std::string& folder) {
        return logs("Installing ISF.zip...") + "\n" + unpacks("ISF.zip", folder);
    }

    static constexpr const char* shared = "/Users/Shared/Morvella";
    static constexpr const char* documents = "/Users/ann/Documents/Morvella";
    static constexpr const char* createdShared = "created /Users/Shared/Morvella/";
    static constexpr const char* createdDocuments = "created /Users/ann/Documents/Morvella/";
    static constexpr const char* fallsBack =
        "log: Shared folder not found, falling back to user folder.";

    const std::string installsToShared = createsFolder(shared) + "\n" + installsTo(shared);
    const std::string installsToDocuments = createsFolder(documents) + "\n" + installsTo(documents);
    /// After an error "read-only" for the shared folder.
    const std::string fallsBackAfterError = cannotCreate(shared, "read-only") + "\n" + fallsBack +
                                            "\n" +
                                            logs(
                                                "Couldn't access documents folder, "
                                                "error:read-only");
};

TEST_F(SharedDataTest, IsUnpackedIntoTheSharedProductFolder) {
    install();
    expectEverything({
        "asked: exists /Users/Shared/Morvella",
        createsFolder(shared),
        "asked: writable /Users/Shared/Morvella",
        "asked: reachable /Users/Shared/",
        "log: Installing ISF.zip...",
        "asked: path of resource ISF.zip",
        unpacks("ISF.zip", shared),
    });
}

TEST_F(SharedDataTest, IsNotUnpackedIfAFolderOrFileOfThatNameExists) {
    disk.addFile("/Users/Shared/Morvella/ISF/Standard/mine.fs");
    install();
    expectEverything({"asked: exists /Users/Shared/Morvella"});
    disk.remove(shared);
    disk.addFile(shared, "a file");
    install();
    expectEverything({"asked: exists /Users/Shared/Morvella"});
}

TEST_F(SharedDataTest, GoesToTheDocumentsWhenTheSharedFolderCannotBeCreated) {
    refuse(createdShared, "read-only");
    install();
    expectEverything({
        "asked: exists /Users/Shared/Morvella",
        "file: created /Users/Shared/Morvella/",
        "log: Couldn't create shared folder(file:///Users/Shared/Morvella/), error:read-only",
        "asked: writable /Users/Shared/Morvella",
        fallsBack,
        "asked: the documents folder of the user",
        "log: Couldn't access documents folder, error:read-only",
        "asked: exists /Users/ann/Documents/Morvella/ISF/Dariwent",
        "asked: exists /Users/ann/Documents/Morvella/ISF/Standard",
        createsFolder(documents),
        "asked: reachable /Users/ann/Documents/",
        "log: Installing ISF.zip...",
        "asked: path of resource ISF.zip",
        unpacks("ISF.zip", documents),
    });
}

TEST_F(SharedDataTest, GoesToTheDocumentsWhenTheSharedFolderIsNotWritable) {
    disk.outcomes[createdShared] = {.result = true};
    install();
    expectEffects({createsFolder(shared), fallsBack, installsToDocuments});
}

TEST_F(SharedDataTest, StaysSharedWhenCreationFailsButTheFolderIsWritable) {
    disk.outcomes[createdShared] = {.error = Error{"odd"}, .takesEffect = true};
    install();
    expectEffects({cannotCreate(shared, "odd"), installsTo(shared)});
}

TEST_F(SharedDataTest, OldShadersInTheDocumentsAreTrashedInOrder) {
    refuse(createdShared, "read-only");
    disk.addFile("/Users/ann/Documents/Morvella/ISF/Standard/b.fs");
    disk.addFile("/Users/ann/Documents/Morvella/ISF/Dariwent/a.fs");
    disk.addFile("/Users/ann/Documents/Morvella/ISF/Mine/c.fs");
    disk.addFile("/Users/ann/Documents/ISF/Standard/d.fs");
    install();
    expectEffects({fallsBackAfterError, deletesFolder("/Users/ann/Documents/Morvella/ISF/Dariwent"),
                   deletesFolder("/Users/ann/Documents/Morvella/ISF/Standard"),
                   installsToDocuments});
    EXPECT_TRUE(disk.holds("/Users/ann/Documents/Morvella/ISF/Mine/c.fs"));
    EXPECT_TRUE(disk.holds("/Users/ann/Documents/ISF/Standard/d.fs"));
}

TEST_F(SharedDataTest, AFailureToTrashOldShadersIsOnlyLogged) {
    const std::string old = "/Users/ann/Documents/Morvella/ISF/Dariwent";
    refuse(createdShared, "read-only");
    disk.addFolder(old);
    refuse("trashed " + old + "/", "refused");
    install();
    expectEffects({fallsBackAfterError, deletesFolder(old), failsToTrashFolder(old),
                   logs("Couldn't delete " + old), installsToDocuments});
}

TEST_F(SharedDataTest, AFailureToCreateTheDocumentsFolderIsOnlyLogged) {
    refuse(createdShared, "read-only");
    refuse(createdDocuments, "full");
    install();
    expectEffects({fallsBackAfterError, cannotCreate(documents, "full"), installsTo(documents)});
}

/// A step that fails without an error of its own logs the previous one.
TEST_F(SharedDataTest, AnErrorStaysUntilALaterOneReplacesIt) {
    refuse(createdShared, "read-only");
    disk.outcomes[createdDocuments] = {};
    install();
    expectEffects(
        {fallsBackAfterError, cannotCreate(documents, "read-only"), installsTo(documents)});
}

TEST_F(SharedDataTest, AFailureWithoutAnyErrorLogsNull) {
    disk.outcomes[createdShared] = {};
    install();
    expectEffects({cannotCreate(shared, "(null)"), fallsBack, installsToDocuments});
}

TEST_F(SharedDataTest, AUsersFolderErrorIsAWarningAndIsLoggedAgainLater) {
    folders.users.error = Error{"no users"};
    disk.outcomes[createdShared] = {};
    install();
    expectEffects({"log: Warning: Couldn't get local domain user folder, error:no users",
                   cannotCreate(shared, "no users"), fallsBack,
                   "log: Couldn't access documents folder, error:no users", installsToDocuments});
}

TEST_F(SharedDataTest, AUsersFolderWithAnErrorIsStillUsed) {
    folders.users.error = Error{"odd"};
    install();
    expectEffects(
        {"log: Warning: Couldn't get local domain user folder, error:odd", installsToShared});
}

TEST_F(SharedDataTest, GoesToTheDocumentsWithoutAUsersFolder) {
    folders.users = {.url = std::nullopt, .error = Error{"no users"}};
    refuse("created Shared/Morvella/", "nowhere");
    install();
    const std::string effects = journal.effects();
    EXPECT_TRUE(effects.starts_with(
        "log: Warning: Couldn't get local domain user folder, error:no users\n"));
    EXPECT_TRUE(effects.ends_with(lines({installsToDocuments}))) << effects;
}

TEST_F(SharedDataTest, ADocumentsFolderErrorIsLogged) {
    refuse(createdShared, "read-only");
    folders.documents.error = Error{"no documents"};
    install();
    expectEffects({cannotCreate(shared, "read-only"), fallsBack,
                   "log: Couldn't access documents folder, error:no documents",
                   installsToDocuments});
}

TEST_F(SharedDataTest, WithoutAnyFolderASheetIsShownAndUnpackingIsStillAttempted) {
    refuse(createdShared, "read-only");
    refuse(createdDocuments, "gone");
    disk.remove("/Users/ann/Documents");
    install();
    expectEffects({fallsBackAfterError, cannotCreate(documents, "gone"),
                   "log: Couldn't acces neither Shared nor User Home folder.",
                   showsCriticalSheet("Could not access shared user data, aborting."),
                   installsTo(documents)});
}

TEST_F(SharedDataTest, WithoutADocumentsFolderASheetIsShown) {
    refuse(createdShared, "read-only");
    folders.documents = {.url = std::nullopt, .error = Error{"no documents"}};
    install();
    EXPECT_EQ(journal.only({Kind::sheet}),
              lines({criticalSheet("Could not access shared user data, aborting.")}));
}

TEST_F(SharedDataTest, ShadersThatCannotBeUnpackedShowASheet) {
    failArchiver("/Bundle/ISF.zip");
    install();
    expectEffects({installsToShared, "log: Decompressing resource failed: ISF.zip",
                   showsCriticalSheet("Could not install user files, aborting.")});
}

}  // namespace

}  // namespace morvella::tests
