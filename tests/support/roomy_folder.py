"""Where tests and benchmarks put their files."""

import shutil
import tempfile
from pathlib import Path


def roomy_folder(size):
    """In memory if that many bytes have room there: a disk takes longer, more so to make files again
    right after others were deleted, and differs from time to time."""
    memory = Path("/dev/shm")
    if memory.is_dir() and shutil.disk_usage(memory).free > size:
        return memory
    return Path(tempfile.gettempdir())
