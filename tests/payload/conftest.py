"""A payload to check, and a copy of the scripts with stand-ins for Apple's tools."""

import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

import pytest
from sample_payload import SamplePayload

HERE = Path(__file__).resolve().parent
ROOT = HERE.parents[1]
TOOLS = "cmake codesign ditto file lipo otool plutil screencapture spctl uname vtool xattr".split()
TOOLS += ["xcodebuild", "xcrun"]


SUITE, UTILITY, SHADERS = "morvella.zip", "Tressimo.zip", "ISF.zip"


def check(*arguments):
    return subprocess.run(
        [sys.executable, "-B", ROOT / "script/check-payload", *arguments],
        capture_output=True,
        encoding="utf-8",
        env={"PYTHONUTF8": "1"},
        check=False,
    )


def findings(folder, kind="error"):
    """What the check says about the payload in the folder; any error makes it fail."""
    run = check(folder)
    lines = run.stdout.splitlines()
    errors = any(line.startswith("error: ") for line in lines)
    assert (run.stderr, run.returncode) == ("", 1 if errors else 0)
    return [line.removeprefix(f"{kind}: ") for line in lines if line.startswith(f"{kind}: ")]


class Mac:
    """A copy of the scripts in `root`, run with stand-ins for the tools in the PATH."""

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
        assert list(self.root.glob("tmp*")) == [], "temporary folders are left behind"
        return run


@pytest.fixture
def folder():
    with tempfile.TemporaryDirectory(prefix="morvella-") as name:
        yield Path(name).resolve()


@pytest.fixture
def payload():
    return SamplePayload()
