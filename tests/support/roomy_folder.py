"""Where tests and benchmarks put their files."""

import os
import tempfile
from pathlib import Path


def roomy_folder(gigabytes):
    """In memory if so much has room there, and programs may run: a disk takes longer, more
    so to make files again right after others were deleted, and differs from time to time."""
    memory = Path("/dev/shm")
    if memory.is_dir():
        system = os.statvfs(memory)
        if system.f_bavail * system.f_frsize > gigabytes * 1e9 and not system.f_flag & os.ST_NOEXEC:
            return memory
    return Path(tempfile.gettempdir())
