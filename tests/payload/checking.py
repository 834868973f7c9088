"""Runs script/check-payload on a payload."""

import subprocess
import sys
from pathlib import Path

CHECK = Path(__file__).resolve().parents[2] / "script/check-payload"
SUITE, UTILITY, SHADERS = "morvella.zip", "Tressimo.zip", "ISF.zip"


def check(*arguments):
    return subprocess.run(
        [sys.executable, "-B", CHECK, *arguments],
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
