"""Timing side by side: every round runs each of two once, in turn."""

import os
import subprocess
import time

ROUNDS = 7


def side_by_side(ours, theirs, rounds=ROUNDS):
    """What the two functions return, a pair for each round, after one round to warm up."""
    return [(ours(), theirs()) for _ in range(1 + rounds)][1:]


def run_time(command, **options):
    """The seconds from a command's start to its end; it must succeed."""
    options = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, **options}
    start = time.perf_counter()
    subprocess.run([str(word) for word in command], check=True, stdin=subprocess.DEVNULL, **options)
    return time.perf_counter() - start


def settle():
    """Leaves the disk nothing to do that belongs to what ran before."""
    os.sync()


def peak_memory(process):
    """The most memory that a running process has held so far, in bytes."""
    with open(f"/proc/{process.pid}/status", encoding="ascii") as status:
        return next(int(line.split()[1]) * 1024 for line in status if line.startswith("VmHWM:"))
