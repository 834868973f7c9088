"""The clone's folder, under a path that the build tools can handle. See script/root."""

import os
import subprocess
from pathlib import Path


def enter():
    """Makes the clone the working directory; returns its path."""
    command = Path(__file__).resolve().parent.parent.parent / "script/root"
    printed = subprocess.run([command], stdout=subprocess.PIPE, text=True, check=True).stdout
    root = printed.removesuffix("\n")
    os.chdir(root)
    os.environ["PWD"] = root  # otherwise CMake would resolve the link
    return Path(root)
