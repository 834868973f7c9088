"""The help page names every sheet in the sheet's own words."""

import re
import unittest

from source_rules import ROOT, sources

LITERAL = r'"(?:\\.|[^"\\])*"'
MESSAGE = re.compile(
    rf"(?:terminateAppWithAlertSheet\(|\.messageText =)\s*((?:{LITERAL}\s*)+)", re.DOTALL
)
NEVER_SHOWN = {"There is a version of Morvella already installed."}


def messages():
    """The first line of each sheet's message."""
    found = set()
    for text in sources().values():
        for match in MESSAGE.finditer(text):
            message = "".join(literal[1:-1] for literal in re.findall(LITERAL, match[1]))
            found.add(message.split(r"\n")[0])
    return found


class HelpTest(unittest.TestCase):
    def test_names_every_sheet_that_is_shown(self):
        text = " ".join((ROOT / "docs/help.md").read_text(encoding="utf-8").split())
        sheets = messages()
        self.assertGreaterEqual(sheets, NEVER_SHOWN)
        missing = [each for each in sorted(sheets - NEVER_SHOWN) if f'"{each}"' not in text]
        self.assertEqual(missing, [])


if __name__ == "__main__":
    unittest.main()
