"""Benchmarks the installer against baselines and prints a table.

Each figure is the median of several rounds after a warm-up; each round runs both sides once.
A run over all rows also writes the table into docs/performance.md. Installs what is missing and
builds what it needs. The machine should have nothing else to do.
"""

import argparse
import contextlib
import shutil
import signal
import subprocess
import sys
import tempfile
from dataclasses import dataclass
from pathlib import Path

import library_cfg
import report
import windows
from display import Display
from product import ROOT
from roomy_folder import roomy_folder

KB, MB, GB = 10**3, 10**6, 10**9
BUILD = ROOT / "build/linux"
SMALLEST = "the smallest application"
SCRIPT = "the same commands in a shell script"


@dataclass(frozen=True)
class Sizes:
    """How much is measured, and how often; payloads are (files, bytes)."""

    rounds: int
    # A short run varies more from one time to the next.
    short_rounds: int
    big: tuple
    many: tuple
    small: tuple
    configuration: tuple


FULL = Sizes(7, 21, (200, GB), (50_000, 100 * MB), (200, 10 * MB), (10 * KB, 100 * MB))
QUICK = Sizes(2, 2, (20, 20 * MB), (1000, 2 * MB), (20, MB), (10 * KB, MB))


def side_by_side(ours, theirs, rounds):
    """What the two functions return, a pair for each round, after one round to warm up."""
    return [(ours(), theirs()) for _ in range(1 + rounds)][1:]


def start(work, sizes):
    """From the launch until the first page is drawn."""
    with windows.Applications(work, BUILD) as both:
        installer, smallest = both.first_page(both.installer), both.first_page(both.smallest)
        pairs = side_by_side(
            lambda: both.time_to(installer, both.installer),
            lambda: both.time_to(smallest, both.smallest),
            sizes.short_rounds,
        )
    yield report.compared("start to first page drawn", SMALLEST, pairs)


def install(work, sizes):
    """A whole installation, and the installer's own share of it."""
    for size in (sizes.big, sizes.many):
        with Display() as display, folder_in(work) as folder:
            installation = windows.Installation(folder, BUILD, display, *size)
            runs = side_by_side(
                installation.by_installer, installation.by_script, sizes.short_rounds
            )
        payload = f"payload of {report.amount(size[1])} in {size[0]:,} files"
        whole = [(ours.seconds, script.seconds) for ours, script in runs]
        outside = [(ours.outside, script.outside) for ours, script in runs]
        share = [(ours.outside, ours.seconds) for ours, _ in runs]
        figure = f"installation without the archiver's runs, {payload}"
        yield report.compared(f"whole installation, {payload}", SCRIPT, whole)
        yield report.compared(figure, SCRIPT, outside)
        yield report.compared(figure, "the whole installation", share, limit=0.015)


def memory(work, sizes):
    """The installer's own peak memory in a whole run."""
    for size in (sizes.small, sizes.big):
        with folder_in(work) as folder, windows.Applications(folder, BUILD) as both:
            installation = windows.Installation(folder, BUILD, both.display, *size)
            pairs = side_by_side(
                lambda: installation.by_installer().memory, both.smallest_memory, sizes.rounds
            )
        figure = f"peak memory, payload of {report.amount(size[1])}"
        yield report.compared(figure, SMALLEST, pairs, unit=report.amount)


def configuration(work, sizes):
    """The User Library from a Library.cfg: of its usual size, and of one far beyond."""
    for size in sizes.configuration:
        written = library_cfg.write(work, size)
        runs = [library_cfg.look_up(BUILD, work) for _ in range(1 + sizes.rounds)][1:]
        name = f"a Library.cfg of {report.amount(written)}"
        times = [(seconds, 1) for seconds, _ in runs]
        yield report.compared(f"User Library from {name}", "one second", times, limit=1)
        if size == max(sizes.configuration):
            growth = [(grown, written) for _, grown in runs]
            figure = f"memory for {name}"
            yield report.compared(figure, "the file", growth, limit=2, unit=report.amount)


ROWS = {"start": start, "install": install, "memory": memory, "library-cfg": configuration}


@contextlib.contextmanager
def folder_in(parent):
    """Gone afterwards, also when the run is interrupted."""
    folder = Path(tempfile.mkdtemp(prefix="morvella-bench-", dir=parent)).resolve()
    try:
        yield folder
    finally:
        shutil.rmtree(folder)


def main():
    parser = argparse.ArgumentParser(prog="script/bench", description=__doc__)
    parser.add_argument("--row", choices=ROWS, help="measure only this, and write nothing")
    parser.add_argument(
        "--quick", action="store_true", help="small sizes and two rounds, to try it; writes nothing"
    )
    options = parser.parse_args()
    # Ends by an exception, so that everything is cleaned up.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    subprocess.run([ROOT / "script/build"], check=True, stdout=sys.stderr)
    command = ["cmake", "--build", "--preset", "linux", "--target", "bench_programs", "inspector"]
    subprocess.run(command, check=True, cwd=ROOT, stdout=sys.stderr)

    figures, machine = [], report.machine()
    for name in [options.row] if options.row else ROWS:
        print(f"{name} ...", file=sys.stderr, flush=True)
        with folder_in(roomy_folder(gigabytes=8)) as work:
            figures += ROWS[name](work, QUICK if options.quick else FULL)
    print("\n".join(report.table(figures)))
    if not options.row and not options.quick:
        report.write(ROOT / "docs/performance.md", figures, machine)


if __name__ == "__main__":
    try:
        main()
    except KeyboardInterrupt:
        sys.exit(130)
