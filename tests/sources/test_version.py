"""The change log is at the version that is built."""

import re
import unittest

from source_rules import ROOT


def first(pattern, file):
    return re.search(pattern, (ROOT / file).read_text(encoding="utf-8"), re.MULTILINE)[1]


class VersionTest(unittest.TestCase):
    def test_change_log_begins_with_the_version_of_the_build(self):
        built = first(r"^project\(MorvellaInstaller VERSION (\S+) ", "CMakeLists.txt")
        self.assertEqual(first(r"^## (.+)$", "CHANGELOG.md"), built)


if __name__ == "__main__":
    unittest.main()
