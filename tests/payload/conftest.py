"""A payload to check, and a copy of the scripts with stand-ins for Apple's tools."""

import os
import plistlib
import shutil
import stat
import subprocess
import sys
import tempfile
import zipfile
from pathlib import Path

import pytest

HERE = Path(__file__).resolve().parent
ROOT = HERE.parents[1]
TOOLS = "cmake codesign ditto file lipo otool plutil screencapture spctl uname vtool xattr".split()
TOOLS += ["xcodebuild", "xcrun"]

SUITE, UTILITY, SHADERS = "morvella.zip", "Tressimo.zip", "ISF.zip"
FILE = stat.S_IFREG | 0o644
PROGRAM = stat.S_IFREG | 0o755
FOLDER = stat.S_IFDIR | 0o755
LINK = stat.S_IFLNK | 0o755
UNIX = 3


def information(executable):
    return plistlib.dumps({"CFBundleExecutable": executable})


class SamplePayload:
    """Three archives as lists of (name, content, mode), to change before calling `write`."""

    def __init__(self):
        self.archives = {
            "morvella.zip": [
                ("Morvella/Morvella.app/Contents/Info.plist", information("Morvella"), FILE),
                ("Morvella/Morvella.app/Contents/MacOS/Morvella", b"#!/bin/sh\n", PROGRAM),
                ("Morvella/Sources/Vellicor.amxd", b"ampf", FILE),
            ],
            "Tressimo.zip": [
                ("Tressimo.app/Contents/Info.plist", information("Tressimo"), FILE),
                ("Tressimo.app/Contents/MacOS/Tressimo", b"#!/bin/sh\n", PROGRAM),
            ],
            "ISF.zip": [
                ("ISF/Dariwent/Ripple.fs", b"/*{}*/", FILE),
                ("ISF/Standard/Invert.fs", b"/*{}*/", FILE),
            ],
        }

    def add(self, archive, name, content=b"x", mode=FILE):
        self.archives[archive].append((name, content, mode))

    def drop(self, archive, start):
        """Drops the entries whose names begin with `start`."""
        entries = self.archives[archive]
        self.archives[archive] = [each for each in entries if not each[0].startswith(start)]
        assert self.archives[archive] != entries, start

    def rename(self, archive, old, new):
        self.archives[archive] = [
            (name.replace(old, new), content, mode)
            for name, content, mode in self.archives[archive]
        ]

    def replace(self, archive, name, content, mode=FILE):
        self.drop(archive, name)
        self.add(archive, name, content, mode)

    def write(self, folder):
        for archive, entries in self.archives.items():
            with zipfile.ZipFile(folder / archive, "w", zipfile.ZIP_DEFLATED) as file:
                for name, content, mode in entries:
                    info = zipfile.ZipInfo(name)
                    info.create_system = UNIX
                    info.external_attr = mode << 16
                    info.compress_type = zipfile.ZIP_DEFLATED
                    file.writestr(info, content)


def check(*arguments):
    return subprocess.run(
        [sys.executable, "-B", ROOT / "script/check-payload", *arguments],
        capture_output=True,
        encoding="utf-8",
        env={"PYTHONUTF8": "1"},
        check=False,
    )


def findings(folder, payload=None, kind="error"):
    """Writes the payload, if any; returns one kind of finding. Any error must fail the check."""
    if payload:
        payload.write(folder)
    run = check(folder)
    lines = run.stdout.splitlines()
    errors = any(line.startswith("error: ") for line in lines)
    assert (run.stderr, run.returncode) == ("", 1 if errors else 0)
    return [line.removeprefix(f"{kind}: ") for line in lines if line.startswith(f"{kind}: ")]


class Mac:
    """A copy of the scripts in `root`, run with stand-ins for Apple's tools in the PATH."""

    def __init__(self, root):
        self.root = root
        self._environment = {
            "PATH": f"{root}/tools:{os.environ['PATH']}",
            "TMPDIR": str(root),
            "PYTHONDONTWRITEBYTECODE": "1",
        }
        shutil.copytree(ROOT / "script", root / "script")
        (root / "tools").mkdir()
        for tool in TOOLS:
            shutil.copy(HERE / "fake_tool", root / "tools" / tool)

    def run(self, script, *arguments, **environment):
        run = subprocess.run(
            [self.root / "script" / script, *arguments],
            capture_output=True,
            encoding="utf-8",
            env=self._environment | environment,
            cwd="/",
            check=False,
        )
        assert list(self.root.glob("tmp*")) == [], "the script left temporary folders behind"
        return run


@pytest.fixture
def folder():
    with tempfile.TemporaryDirectory(prefix="morvella-") as name:
        yield Path(name).resolve()


@pytest.fixture
def payload():
    return SamplePayload()
