#include "support/installer_test.hpp"

namespace morvella::tests {

namespace {

/// The last stage: the shader files. The other stages have nothing to report.
class SharedDataTest : public InstallerTest {
  protected:
    SharedDataTest() {
        useUserLibrary();
        disk.addFolder("/Users/Shared");
        disk.addFolder("/Users/ann/Documents");
        disk.addFile("/Users/ann/Library/Fonts/Archivo-Medium.ttf");
        disk.addFile("/Users/ann/Library/Fonts/OpenSans-Regular.ttf");
    }

    /// Runs the stage and keeps of the journal what it wrote.
    void install() {
        controller.installTo(FileUrl::directory("/ignored"));
        const std::string everything = journal.everything();
        stage = everything.substr(everything.find("asked: the users folder of the machine\n"));
    }

    /// What the stage did, without questions.
    [[nodiscard]] std::string effects() const {
        std::string text;
        for (size_t start = 0; start < stage.size();) {
            const size_t end = stage.find('\n', start) + 1;
            const std::string line = stage.substr(start, end - start);
            text += line.starts_with("asked: ") ? "" : line;
            start = end;
        }
        return text;
    }

    void makeSharedProductUnwritable() {
        disk.outcomes["created /Users/Shared/Morvella/"] = {.error = Error{"read-only"}};
    }

    static constexpr const char* fallback =
        "file: created /Users/Shared/Morvella/\n"
        "log: Couldn't create shared folder(file:///Users/Shared/Morvella/), error:read-only\n"
        "log: Shared folder not found, falling back to user folder.\n"
        "log: Couldn't access documents folder, error:read-only\n";
    inline static const std::string unpacked =
        "log: Installing ISF.zip...\n"
        "run: /usr/bin/ditto | -v | -x | -k | /Bundle/ISF.zip | "
        "/Users/ann/Documents/Morvella\n";
    inline static const std::string unpackedToDocuments =
        "file: created /Users/ann/Documents/Morvella/\n" + unpacked;

    std::string stage;
};

TEST_F(SharedDataTest, IsUnpackedIntoTheSharedProductFolder) {
    install();
    EXPECT_EQ(stage,
              lines({
                  "asked: the users folder of the machine",
                  "asked: exists /Users/Shared/Morvella",
                  "file: created /Users/Shared/Morvella/",
                  "asked: writable /Users/Shared/Morvella",
                  "asked: reachable /Users/Shared/",
                  "log: Installing ISF.zip...",
                  "asked: path of resource ISF.zip",
                  "run: /usr/bin/ditto | -v | -x | -k | /Bundle/ISF.zip | /Users/Shared/Morvella",
              }));
}

TEST_F(SharedDataTest, IsLeftAloneWhereItExists) {
    disk.addFile("/Users/Shared/Morvella/ISF/Standard/mine.fs");
    install();
    EXPECT_EQ(stage, lines({"asked: the users folder of the machine",
                            "asked: exists /Users/Shared/Morvella"}));
}

TEST_F(SharedDataTest, IsLeftAloneWhereAFileOfThatNameExists) {
    disk.addFile("/Users/Shared/Morvella", "a file");
    install();
    EXPECT_EQ(effects(), "");
}

TEST_F(SharedDataTest, IsLeftAloneAlsoAfterAnErrorOfTheUsersFolder) {
    folders.users.error = Error{"odd"};
    disk.addFolder("/Users/Shared/Morvella");
    install();
    EXPECT_EQ(effects(), lines({"log: Warning: Couldn't get local domain user folder, error:odd"}));
}

TEST_F(SharedDataTest, GoesToTheDocumentsWhenTheSharedFolderCannotBeMade) {
    makeSharedProductUnwritable();
    install();
    EXPECT_EQ(stage, lines({
                         "asked: the users folder of the machine",
                         "asked: exists /Users/Shared/Morvella",
                         "file: created /Users/Shared/Morvella/",
                         "log: Couldn't create shared folder(file:///Users/Shared/Morvella/), "
                         "error:read-only",
                         "asked: writable /Users/Shared/Morvella",
                         "log: Shared folder not found, falling back to user folder.",
                         "asked: the documents folder of the user",
                         "log: Couldn't access documents folder, error:read-only",
                         "asked: exists /Users/ann/Documents/Morvella/ISF/Dariwent",
                         "asked: exists /Users/ann/Documents/Morvella/ISF/Standard",
                         "file: created /Users/ann/Documents/Morvella/",
                         "asked: reachable /Users/ann/Documents/",
                         "log: Installing ISF.zip...",
                         "asked: path of resource ISF.zip",
                         "run: /usr/bin/ditto | -v | -x | -k | /Bundle/ISF.zip | "
                         "/Users/ann/Documents/Morvella",
                     }));
}

TEST_F(SharedDataTest, GoesToTheDocumentsWhenTheSharedFolderIsNotWritable) {
    disk.outcomes["created /Users/Shared/Morvella/"] = {.result = true};
    install();
    EXPECT_EQ(effects(), lines({"file: created /Users/Shared/Morvella/",
                                "log: Shared folder not found, falling back to user folder."}) +
                             unpackedToDocuments);
}

TEST_F(SharedDataTest, StaysSharedWhenTheFolderReportsAnErrorButIsWritable) {
    disk.outcomes["created /Users/Shared/Morvella/"] = {
        .result = false, .error = Error{"odd"}, .takesEffect = true};
    install();
    EXPECT_EQ(effects(),
              lines({"file: created /Users/Shared/Morvella/",
                     "log: Couldn't create shared folder(file:///Users/Shared/Morvella/), "
                     "error:odd",
                     "log: Installing ISF.zip...",
                     "run: /usr/bin/ditto | -v | -x | -k | /Bundle/ISF.zip | "
                     "/Users/Shared/Morvella"}));
}

TEST_F(SharedDataTest, OldShadersInTheDocumentsGoToTheTrashInOrder) {
    makeSharedProductUnwritable();
    disk.addFile("/Users/ann/Documents/Morvella/ISF/Standard/b.fs");
    disk.addFile("/Users/ann/Documents/Morvella/ISF/Dariwent/a.fs");
    disk.addFile("/Users/ann/Documents/Morvella/ISF/Mine/c.fs");
    disk.addFile("/Users/ann/Documents/ISF/Standard/d.fs");
    install();
    EXPECT_EQ(effects(), fallback +
                             lines({"log: Deleting /Users/ann/Documents/Morvella/ISF/Dariwent",
                                    "file: trashed /Users/ann/Documents/Morvella/ISF/Dariwent/",
                                    "log: Deleting /Users/ann/Documents/Morvella/ISF/Standard",
                                    "file: trashed /Users/ann/Documents/Morvella/ISF/Standard/"}) +
                             unpackedToDocuments);
    EXPECT_TRUE(disk.holds("/Users/ann/Documents/Morvella/ISF/Mine/c.fs"));
    EXPECT_TRUE(disk.holds("/Users/ann/Documents/ISF/Standard/d.fs"));
}

TEST_F(SharedDataTest, OldShadersThatStayAreOnlyLogged) {
    makeSharedProductUnwritable();
    disk.addFolder("/Users/ann/Documents/Morvella/ISF/Dariwent");
    disk.addFolder("/Users/ann/Documents/Morvella/ISF/Standard");
    disk.outcomes["trashed /Users/ann/Documents/Morvella/ISF/Dariwent/"] = {.error =
                                                                                Error{"refused"}};
    install();
    EXPECT_EQ(effects(),
              fallback +
                  lines({"log: Deleting /Users/ann/Documents/Morvella/ISF/Dariwent",
                         "file: trashed /Users/ann/Documents/Morvella/ISF/Dariwent/",
                         "log: failed to move to "
                         "trash:file:///Users/ann/Documents/Morvella/ISF/Dariwent/",
                         "log: Couldn't delete /Users/ann/Documents/Morvella/ISF/Dariwent",
                         "log: Deleting /Users/ann/Documents/Morvella/ISF/Standard",
                         "file: trashed /Users/ann/Documents/Morvella/ISF/Standard/"}) +
                  unpackedToDocuments);
}

TEST_F(SharedDataTest, ADocumentsFolderThatCannotBeMadeIsOnlyLogged) {
    makeSharedProductUnwritable();
    disk.outcomes["created /Users/ann/Documents/Morvella/"] = {.error = Error{"full"}};
    install();
    EXPECT_EQ(effects(), fallback +
                             lines({"file: created /Users/ann/Documents/Morvella/",
                                    "log: Couldn't create shared "
                                    "folder(file:///Users/ann/Documents/Morvella/), error:full"}) +
                             unpacked);
}

/// Without an error of its own a step that fails shows the one before it.
TEST_F(SharedDataTest, AnErrorStaysUntilALaterOneReplacesIt) {
    makeSharedProductUnwritable();
    disk.outcomes["created /Users/ann/Documents/Morvella/"] = {};
    install();
    EXPECT_EQ(effects(),
              fallback +
                  lines({"file: created /Users/ann/Documents/Morvella/",
                         "log: Couldn't create shared "
                         "folder(file:///Users/ann/Documents/Morvella/), error:read-only"}) +
                  unpacked);
}

TEST_F(SharedDataTest, AFolderThatCannotBeMadeWithoutErrorSaysNull) {
    disk.outcomes["created /Users/Shared/Morvella/"] = {};
    install();
    EXPECT_EQ(effects(),
              lines({"file: created /Users/Shared/Morvella/",
                     "log: Couldn't create shared folder(file:///Users/Shared/Morvella/), "
                     "error:(null)",
                     "log: Shared folder not found, falling back to user folder."}) +
                  unpackedToDocuments);
}

TEST_F(SharedDataTest, AnErrorOfTheUsersFolderIsAWarningAndComesUpAgain) {
    folders.users.error = Error{"no users"};
    disk.outcomes["created /Users/Shared/Morvella/"] = {};
    install();
    EXPECT_EQ(effects(),
              lines({"log: Warning: Couldn't get local domain user folder, error:no users",
                     "file: created /Users/Shared/Morvella/",
                     "log: Couldn't create shared folder(file:///Users/Shared/Morvella/), "
                     "error:no users",
                     "log: Shared folder not found, falling back to user folder.",
                     "log: Couldn't access documents folder, error:no users"}) +
                  unpackedToDocuments);
}

TEST_F(SharedDataTest, AUsersFolderWithAnErrorIsUsedAllTheSame) {
    folders.users.error = Error{"odd"};
    install();
    EXPECT_EQ(effects(),
              lines({"log: Warning: Couldn't get local domain user folder, error:odd",
                     "file: created /Users/Shared/Morvella/", "log: Installing ISF.zip...",
                     "run: /usr/bin/ditto | -v | -x | -k | /Bundle/ISF.zip | "
                     "/Users/Shared/Morvella"}));
}

TEST_F(SharedDataTest, WithoutUsersFolderTheDocumentsServe) {
    folders.users = {.url = std::nullopt, .error = Error{"no users"}};
    disk.outcomes["created Shared/Morvella/"] = {.error = Error{"nowhere"}};
    install();
    const std::string done = effects();
    EXPECT_TRUE(
        done.starts_with("log: Warning: Couldn't get local domain user folder, error:no users\n"));
    EXPECT_TRUE(done.ends_with(unpackedToDocuments)) << done;
}

TEST_F(SharedDataTest, AnErrorOfTheDocumentsFolderIsLogged) {
    makeSharedProductUnwritable();
    folders.documents.error = Error{"no documents"};
    install();
    EXPECT_EQ(effects(),
              lines({"file: created /Users/Shared/Morvella/",
                     "log: Couldn't create shared folder(file:///Users/Shared/Morvella/), "
                     "error:read-only",
                     "log: Shared folder not found, falling back to user folder.",
                     "log: Couldn't access documents folder, error:no documents"}) +
                  unpackedToDocuments);
}

TEST_F(SharedDataTest, WithoutAnyBaseASheetIsShownAndUnpackingIsTriedAllTheSame) {
    makeSharedProductUnwritable();
    disk.remove("/Users/ann/Documents");
    disk.outcomes["created /Users/ann/Documents/Morvella/"] = {.error = Error{"gone"}};
    install();
    EXPECT_EQ(effects(), fallback +
                             lines({"file: created /Users/ann/Documents/Morvella/",
                                    "log: Couldn't create shared "
                                    "folder(file:///Users/ann/Documents/Morvella/), error:gone",
                                    "log: Couldn't acces neither Shared nor User Home folder."}) +
                             terminationSheet("Could not access shared user data, aborting.") +
                             unpacked);
}

TEST_F(SharedDataTest, WithoutADocumentsFolderASheetIsShown) {
    makeSharedProductUnwritable();
    folders.documents = {.url = std::nullopt, .error = Error{"no documents"}};
    install();
    EXPECT_EQ(journal.only({Kind::sheet}),
              lines({"sheet: critical \"Could not access shared user data, aborting.\" [Quit]"}));
}

TEST_F(SharedDataTest, ShadersThatCannotBeUnpackedShowASheet) {
    tasks.results["/Bundle/ISF.zip"] = TaskResult{.terminationStatus = 1, .output = "bad zip"};
    install();
    EXPECT_EQ(
        effects(),
        lines({"file: created /Users/Shared/Morvella/", "log: Installing ISF.zip...",
               "run: /usr/bin/ditto | -v | -x | -k | /Bundle/ISF.zip | "
               "/Users/Shared/Morvella",
               "log: decompress status=bad zip", "log: Decompressing resource failed: ISF.zip"}) +
            terminationSheet("Could not install user files, aborting."));
}

TEST_F(SharedDataTest, ShadersThatTheBundleLacksShowASheet) {
    bundles.main->resources.erase("ISF.zip");
    install();
    EXPECT_EQ(effects(),
              lines({"file: created /Users/Shared/Morvella/", "log: Installing ISF.zip...",
                     "log: Decompressing resource failed: ISF.zip"}) +
                  terminationSheet("Could not install user files, aborting."));
}

}  // namespace

}  // namespace morvella::tests
