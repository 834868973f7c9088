"""How long script/test takes whoever has just cloned the project."""

import os
import subprocess
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
CORE_FILE = "live/user_library.cpp"


class Clone:
    """What is committed, with nothing built and no compiler cache to build it from."""

    def __init__(self, folder):
        self._folder = folder
        self._environment = {
            name: value for name, value in os.environ.items() if not name.endswith("_LAUNCHER")
        }
        self._environment["CCACHE_DISABLE"] = "1"
        subprocess.run(["git", "clone", "--quiet", ROOT, folder], check=True)

    def test(self):
        """The seconds; every test must pass."""
        began = time.perf_counter()
        command = [self._folder / "script/test"]
        subprocess.run(command, check=True, env=self._environment, stdout=sys.stderr)
        return time.perf_counter() - began

    def change_core(self):
        source = self._folder / CORE_FILE
        source.write_bytes(source.read_bytes() + b"// A changed line.\n")
