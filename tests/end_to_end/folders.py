"""Temporary folders, and an ordinary user to run the installer as."""

import contextlib
import os
import re
import shutil
import tempfile
from pathlib import Path

from waiting import wait_until

NOBODY = 65534
USUAL = 0o755


def place_for_everybody():
    """A place for preloaded libraries: LD_PRELOAD is split at spaces and colons, and every user
    must be able to read them."""
    places = [Path(tempfile.gettempdir()).resolve(), *map(Path, ("/tmp", "/var/tmp", "/dev/shm"))]
    for place in places:
        if not re.search(r"[\s:]", str(place)) and place.is_dir() and os.access(place, os.W_OK):
            reachable = all(folder.stat().st_mode & 1 for folder in [place, *place.parents])
            if reachable and not os.statvfs(place).f_flag & os.ST_NOEXEC:
                return place
    raise OSError(f"none of {places} is a folder for temporary files that every user can reach")


@contextlib.contextmanager
def temporary_folder(purpose):
    """Every user can read it. It is deleted even if a test has removed permissions."""
    folder = Path(tempfile.mkdtemp(prefix=f"morvella-{purpose}-", dir=place_for_everybody()))
    folder.chmod(USUAL)
    try:
        yield folder
    finally:
        for below, _, _ in os.walk(folder):
            os.chmod(below, USUAL)
        # The Live application may still be writing.
        wait_until(lambda: _is_removed(folder), f"{folder} to be deleted")


def _is_removed(folder):
    shutil.rmtree(folder, ignore_errors=True)
    return not folder.exists()


def ordinary_user(folder):
    """If run as root, gives the folder to an unprivileged user and returns that user."""
    if os.geteuid() != 0:
        return None
    for path in [folder, *folder.rglob("*")]:
        os.chown(path, NOBODY, NOBODY, follow_symlinks=False)
    return NOBODY
