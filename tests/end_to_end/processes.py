"""Processes, as the system tells of them."""

from pathlib import Path


def children(process):
    """{process: command line} of all running descendants of a process, parents first."""
    found = {}
    for child in _read(process, f"task/{process}/children").split():
        if line := _read(child, "cmdline"):
            found[int(child)] = line.split("\0")[:-1]
            found.update(children(child))
    return found


def run_state(process):
    """The letter that the system has for it; empty once it is gone."""
    return _read(process, "stat").rpartition(")")[2].strip()[:1]


def _read(process, name):
    """Empty if the process is gone, also while it is looked at."""
    try:
        return Path(f"/proc/{process}/{name}").read_bytes().decode("utf-8", "replace")
    except (FileNotFoundError, ProcessLookupError):
        return ""
