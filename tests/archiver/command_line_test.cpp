#include "archiver_test.hpp"

namespace morvella {
namespace {

class WrongCommandLine : public ArchiverTest,
                         public ::testing::WithParamInterface<std::vector<std::string>> {};

TEST_P(WrongCommandLine, IsAnsweredWithUsage) {
    const Outcome result = run(GetParam());
    EXPECT_EQ(result.status, 64);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors,
              "usage: ditto -v -x -k ARCHIVE DESTINATION\n"
              "       ditto -c -k --sequesterRsrc --keepParent FOLDER ZIP\n");
}

using Arguments = std::vector<std::string>;
INSTANTIATE_TEST_SUITE_P(
    Archiver, WrongCommandLine,
    ::testing::Values(Arguments{}, Arguments{"--help"}, Arguments{"a", "b"},
                      Arguments{"-v", "-x", "-k"}, Arguments{"-v", "-x", "-k", "a"},
                      Arguments{"-v", "-x", "-k", "a", "b", "c"}, Arguments{"-x", "-k", "a", "b"},
                      Arguments{"-x", "-v", "-k", "a", "b"}, Arguments{"-c", "-k", "a", "b"},
                      Arguments{"-c", "-k", "--sequesterRsrc", "--keepParent", "a"},
                      Arguments{"-c", "-k", "--keepParent", "--sequesterRsrc", "a", "b"},
                      Arguments{"-c", "-k", "--sequesterRsrc", "--keepParent", "a", "b", "c"}));

TEST_F(ArchiverTest, TakesRelativePaths) {
    writeFile(folder / "library" / "Morvella" / "device", "a device");
    const Conditions here{.workingFolder = folder};
    EXPECT_EQ(pack("library/Morvella", "backup.zip", here).status, 0);
    EXPECT_EQ(run(unpackArguments("backup.zip", "destination"), here).status, 0);
    EXPECT_EQ(contentsOf(destination / "Morvella" / "device"), "a device");
}

}  // namespace
}  // namespace morvella
