"""Where tests and benchmarks put their files."""

import os
import tempfile
from pathlib import Path


def roomy_folder(gigabytes):
    """A folder in memory if it has enough room and programs may run there. A disk is slower,
    especially at creating files right after others were deleted, and its speed varies."""
    memory = Path("/dev/shm")
    if memory.is_dir():
        system = os.statvfs(memory)
        if system.f_bavail * system.f_frsize > gigabytes * 1e9 and not system.f_flag & os.ST_NOEXEC:
            return memory
    return Path(tempfile.gettempdir())
