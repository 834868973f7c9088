"""Polls with a deadline until something is true."""

import os
import time

# How many seconds a step of the installer may take; a build with sanitizers needs more.
PATIENCE = float(os.environ.get("PATIENCE", "10"))


class TimedOut(AssertionError):
    """What a test waited for did not happen in time."""


def wait_until(happened, what, seconds=PATIENCE, interval=0.01):
    """Returns the first true value of `happened()`."""
    deadline = time.monotonic() + seconds
    while True:
        value = happened()
        if value:
            return value
        if time.monotonic() > deadline:
            raise TimedOut(f"waited {seconds:g} seconds for {what}")
        time.sleep(interval)
