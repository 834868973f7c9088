"""The parts of the installer that are changed, and every change to each."""

import re
from pathlib import Path

from interface_file import interface_changes
from source import Source

ROOT = Path(__file__).resolve().parents[2]
CORE = ("app", "archive", "install", "live", "platform")
INTERFACE_FILE = "resources/MainMenu.xib"


def _files(folders, suffixes):
    found = (path for folder in folders for path in (ROOT / folder).iterdir())
    return sorted(str(path.relative_to(ROOT)) for path in found if path.suffix in suffixes)


def parts():
    """{name: its files}."""
    return {
        "core": _files(CORE, (".cpp",)),
        "headers of the core": _files(CORE, (".hpp",)),
        "Cocoa layer": _files(("app", "platform/cocoa"), (".mm",)),
        "interface file": [INTERFACE_FILE],
    }


def changes(file):
    content = (ROOT / file).read_text(encoding="utf-8")
    if file == INTERFACE_FILE:
        return interface_changes(file, content)
    return Source(file, content, _enumerations()).changes()


def _enumerations():
    """The values of each enumeration of the core, by its name."""
    found = {}
    for header in _files(CORE, (".hpp",)):
        text = (ROOT / header).read_text(encoding="utf-8")
        for name, values in re.findall(r"enum class (\w+) \{([^}]*)\}", text):
            found[name] = re.findall(r"(\w+)(?: = [-\d]+)?,?", values)
    return found
