"""Through everything that comes up by the Return key alone, to the end of the installer."""

import contextlib
from pathlib import Path

from waiting import TimedOut


def children(process):
    """{process: command line} of what a process has started and what still runs."""
    found = {}
    for child in Path(f"/proc/{process}/task/{process}/children").read_text().split():
        with contextlib.suppress(FileNotFoundError):
            line = Path(f"/proc/{child}/cmdline").read_bytes().decode("utf-8", "replace")
            if line:
                found[int(child)] = line.split("\0")[:-1]
    return found


def walk(installer, actions=()):
    """Presses Return at every page and sheet until the installer has ended; its exit status.

    `actions` are called before the first keys, one before each.
    """
    actions = iter(actions)
    page = installer.wait_for_first_page()
    while page:
        next(actions, lambda: None)()
        page = go_on(installer, page)
    return installer.wait_for_end()


def go_on(installer, before):
    """Presses Return; the picture of what comes then, when the work is done; None at the end."""
    installer.key("Return")
    page = None
    try:
        while page is None or children(installer.process.pid):
            page = installer.wait_for_stillness(unlike=before)
    except (TimedOut, FileNotFoundError):
        if installer.process.poll() is None:
            raise
        return None
    return page


def nothing():
    """An action where none is wanted."""
