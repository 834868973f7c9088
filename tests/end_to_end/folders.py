"""A folder of one's own, and an ordinary user to look at it."""

import contextlib
import os
import shutil
import tempfile
from pathlib import Path

from waiting import wait_until

NOBODY = 65534
USUAL = 0o755


@contextlib.contextmanager
def temporary_folder(purpose):
    """Readable by every user; removed at the end, whatever a test did to the modes in it."""
    folder = Path(tempfile.mkdtemp(prefix=f"morvella-{purpose}-")).resolve()
    folder.chmod(USUAL)
    try:
        yield folder
    finally:
        for below, _, _ in os.walk(folder):
            os.chmod(below, USUAL)
        # The Live application may still be writing down what it was asked to open.
        wait_until(lambda: _is_removed(folder), f"the end of {folder}")


def _is_removed(folder):
    shutil.rmtree(folder, ignore_errors=True)
    return not folder.exists()


def ordinary_user(folder):
    """A user whom permissions hold back, who is given the folder; root passes through them all."""
    if os.geteuid() != 0:
        return None
    for path in [folder, *folder.rglob("*")]:
        os.chown(path, NOBODY, NOBODY, follow_symlinks=False)
    return NOBODY
