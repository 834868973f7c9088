"""Changes the installer, one small change at a time, and tells which changes no test notices.

A change inverts a condition, removes a statement, swaps two neighbouring ones, changes a text or a
constant, leaves a message out, or drops or changes a connection or an attribute of the interface
file. The core is tried with its unit tests, the Cocoa layer with those on the real Foundation, the
interface file with the tests that read it as data; what these do not notice of the latter two is
tried with the end-to-end tests that read whole pages. A change that does not compile does not
count; one that makes the tests hang is noticed. Changes that make no difference are listed with the
reason in tests/mutation/equivalent.txt. The status is 0 if at least 95 of 100 changes to each part
are noticed and every other one is listed.
"""

import argparse
import os
import random
import sys
import threading
import time
from pathlib import Path

from parts import INTERFACE_FILE, changes, parts
from progress import Progress
from report import report
from worker import Worker, interface_file_is_noticed, program_for
from windows import Windows
from workshop import Build


def chosen(options):
    """{part: the changes to try}."""
    found = {}
    for part, files in parts().items():
        wanted = [file for file in files if not options.only or file in options.only]
        found[part] = [change for file in wanted for change in changes(file)]
        if options.sample is not None and options.sample < len(found[part]):
            found[part] = random.Random(options.seed).sample(found[part], options.sample)
    return {part: changes for part, changes in found.items() if changes}


class Trial:
    """Tries changes, several at a time, each in a worker of its own."""

    def __init__(self, changes_to_try):
        # What takes longest comes first, so that all workers end at the same time.
        self._waiting = sorted(changes_to_try, key=lambda change: change.path.endswith(".hpp"))
        self._progress = Progress(len(self._waiting))
        self._lock, self._problems, self.results = threading.Lock(), [], {}

    def run(self, build, jobs, folder):
        threads = [
            threading.Thread(target=self._work, args=(build, folder / str(number)))
            for number in range(jobs)
        ]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        if self._problems:
            raise self._problems[0]

    def _next(self):
        with self._lock:
            self._progress.tell(len(self._waiting))
            return self._waiting.pop() if self._waiting and not self._problems else None

    def _work(self, build, folder):
        try:
            worker = Worker(build, folder)
            worker.check_unchanged()
            while change := self._next():
                noticed = worker.is_noticed(change)
                if noticed is not None:
                    self.results[change] = noticed
                if noticed is False:
                    print(f"not noticed: {change.path}:{change.line} {change.name}", flush=True)
            # Otherwise something else than the changes makes tests fail.
            worker.check_unchanged()
        except Exception as problem:  # pylint: disable=broad-except
            self._problems.append(problem)


def try_all(tried, jobs, folder, with_windows):
    """{change: whether it was noticed} of those that compile."""
    results, compiled = {}, []
    for change in (change for changes_of_part in tried.values() for change in changes_of_part):
        if change.path == INTERFACE_FILE:
            results[change] = interface_file_is_noticed(change, folder)
        else:
            compiled.append(change)
    build = Build(folder / "build", jobs, {program_for(change) for change in compiled})
    trial = Trial(compiled)
    trial.run(build, jobs, folder)
    results |= trial.results
    shown = [change for change, noticed in results.items() if not noticed and is_shown(change)]
    if shown and with_windows:
        print(f"{len(shown)} changes left for the end-to-end tests", flush=True)
        windows = Windows(build, folder / "windows", jobs)
        progress = Progress(len(shown))
        for done, change in enumerate(shown):
            progress.tell(len(shown) - done)
            results[change] = windows.is_noticed(change)
        windows.check_unchanged()
    return results


def is_shown(change):
    """Whether the change lies between the core and the user."""
    return change.path.endswith((".mm", ".xib"))


def main():
    parser = argparse.ArgumentParser(prog="script/mutate", description=__doc__)
    parser.add_argument("--only", nargs="+", metavar="FILE", help="change only these files")
    parser.add_argument("--sample", type=int, metavar="N", help="try N changes of each part")
    parser.add_argument("--seed", type=int, default=0, help="which sample (default: 0)")
    parser.add_argument("--no-windows", action="store_true", help="try no end-to-end tests")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="how many at a time")
    parser.add_argument("--list", action="store_true", help="only list the changes")
    # Given by script/mutate.
    parser.add_argument("--folder", required=True, type=Path, help=argparse.SUPPRESS)
    options = parser.parse_args()

    tried = chosen(options)
    for part, found in tried.items():
        print(f"{part}: {len(found)} changes", flush=True)
        if options.list:
            print("".join(f"  {change.path}:{change.line} {change.name}\n" for change in found))
    if options.list:
        return
    started = time.monotonic()
    results = try_all(tried, options.jobs, options.folder, not options.no_windows)
    complete = not options.only and options.sample is None
    good = report(tried, results, complete)
    print(f"in {(time.monotonic() - started) / 60:.0f} minutes")
    sys.exit(0 if good else 1)


if __name__ == "__main__":
    main()
