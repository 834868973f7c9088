"""Timing side by side: every round runs each candidate once, in turn."""

import os
import statistics
import subprocess
import time
from dataclasses import dataclass

ROUNDS = 7
# A candidate that takes this many times as long as another in the warm-up is not run again.
HOPELESS = 1.5


@dataclass
class Pairs:
    """The seconds of every round, by the candidates' names; the first one is ours."""

    seconds: dict

    def median(self, name):
        return statistics.median(self.seconds[name])

    @property
    def ours(self):
        return next(iter(self.seconds))

    @property
    def best_other(self):
        """The fastest of those that ours is held against."""
        return min(list(self.seconds)[1:], key=self.median)

    def ratio(self, other=None):
        """The median of ours to another's, round by round, so that both had the same machine."""
        others = self.seconds[other or self.best_other]
        return statistics.median(a / b for a, b in zip(self.seconds[self.ours], others))


def side_by_side(candidates, rounds=ROUNDS):
    """Runs candidates, functions by name that return seconds: once to warm up, then in rounds.

    Returns the Pairs of those worth comparing, and the warm-up's seconds of all.
    """
    warm_up = {name: run() for name, run in candidates.items()}
    ours, *others = candidates
    limit = HOPELESS * min(warm_up[name] for name in others)
    kept = [ours, *(name for name in others if warm_up[name] <= limit)]
    seconds = {name: [] for name in kept}
    for _ in range(rounds):
        for name in kept:
            seconds[name].append(candidates[name]())
    return Pairs(seconds), warm_up


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
    """The most memory that a running process has held so far, in kilobytes."""
    with open(f"/proc/{process.pid}/status", encoding="ascii") as status:
        return next(int(line.split()[1]) for line in status if line.startswith("VmHWM:"))
