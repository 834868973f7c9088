"""Where tests and benchmarks put their files."""

import os
import tempfile
from pathlib import Path


def roomy_folder(gigabytes):
    """In memory if there is enough room and programs may run there: a disk is slower, above
    all at creating files right after others were deleted, and its speed varies."""
    memory = Path("/dev/shm")
    if memory.is_dir():
        system = os.statvfs(memory)
        if system.f_bavail * system.f_frsize > gigabytes * 1e9 and not system.f_flag & os.ST_NOEXEC:
            return memory
    return Path(tempfile.gettempdir())
