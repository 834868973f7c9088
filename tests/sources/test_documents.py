"""The documents and resources must match the version, the fonts and the sheets."""

import re

import pytest
from product import FONTS, ROOT, VERSION
from test_rules import sources

LITERAL = r'"(?:\\.|[^"\\])*"'
MESSAGE = re.compile(
    rf"(?:terminateAppWithAlertSheet\(|\.messageText =)\s*((?:{LITERAL}\s*)+)", re.DOTALL
)
NEVER_SHOWN = {"There is a version of Morvella already installed."}


def text(file):
    return (ROOT / file).read_text(encoding="utf-8")


def sheets():
    """The first line of each sheet's message."""
    found = set()
    for source in sources().values():
        for match in MESSAGE.finditer(source):
            message = "".join(literal[1:-1] for literal in re.findall(LITERAL, match[1]))
            found.add(message.split(r"\n")[0])
    return found


def test_help_quotes_every_sheet():
    help_text = " ".join(text("docs/help.md").split())
    assert sheets() > NEVER_SHOWN
    assert [each for each in sorted(sheets() - NEVER_SHOWN) if f'"{each}"' not in help_text] == []


def test_change_log_begins_with_the_version_of_the_build():
    assert re.search("^## (.+)$", text("CHANGELOG.md"), re.MULTILINE)[1] == VERSION


def test_licence_names_the_version_of_the_build():
    assert re.findall(r"\bVersion (\S+?)\\par", text("resources/license.rtf")) == [VERSION]


def test_resources_contain_the_fonts_of_the_product():
    found = {file.name for file in (ROOT / "resources/fonts").glob("*.[ot]tf")}
    assert found == set(FONTS)


@pytest.mark.parametrize("font", FONTS)
def test_font_has_a_licence_and_is_documented(font):
    family = font.partition("-")[0]
    licence = f"resources/fonts/{family}-OFL.txt"
    named_in = {
        licence: (ROOT / licence).is_file(),
        "docs/help.md, by its file name": f"`{font}`" in text("docs/help.md"),
        "docs/help.md, by its font name": family in text("docs/help.md").replace(" ", ""),
        "resources/MainMenu.xib": family in text("resources/MainMenu.xib").replace(" ", ""),
    }
    missing = [place for place, is_there in named_in.items() if not is_there]
    assert not missing, missing
