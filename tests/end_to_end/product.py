"""What the tests read from the sources: the product's version and its fonts."""

import re
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]


def _find(pattern, file):
    return re.search(pattern, (ROOT / file).read_text(encoding="utf-8"))[1]


VERSION = _find(r"project\(MorvellaInstaller VERSION (\S+) ", "CMakeLists.txt")
FONTS = tuple(re.findall(r'"(.+?)"', _find(r"\bfonts = {(.+?)};", "app/product.hpp")))
