"""The seconds that the runs of one program take, whoever starts it."""

import shutil


class Stopwatch:
    """Puts itself into a program's place; see stopwatch.cpp."""

    def __init__(self, programs, program):
        program.rename(f"{program}.timed")
        shutil.copy(programs.stopwatch, program)
        self._times = program.with_name(f"{program.name}.times")

    def reset(self):
        self._times.unlink(missing_ok=True)

    def seconds(self, runs):
        """Of the runs since the last reset, which must be so many."""
        times = [int(line) for line in self._times.read_text().splitlines()]
        if len(times) != runs:
            raise RuntimeError(f"{len(times)} runs instead of {runs}")
        return sum(times) / 1e9
