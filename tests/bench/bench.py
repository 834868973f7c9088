"""Benchmarks the installer against baselines and prints a table.

Each figure is the median of several rounds after a warm-up; each round measures both sides once.
A full run also writes the table into docs/performance.md. Installs what is missing and builds what
it needs. Run it on an otherwise idle machine.
"""

import argparse
import contextlib
import signal
import subprocess
import sys
import tempfile
from pathlib import Path

import report
import windows
from display import Display
from product import ROOT
from roomy_folder import roomy_folder

KB, MB, GB = 10**3, 10**6, 10**9
ROUNDS = 21
# Payloads, as (files, bytes).
BIG, MANY, SMALL = (200, GB), (50_000, 100 * MB), (200, 10 * MB)
USUAL_CONFIGURATION, LARGE_CONFIGURATION = 10 * KB, 100 * MB
LIBRARY_CFG_ENTRY = """\t\t<{kind}>
\t\t\t<ProjectName Value="{name}" />
\t\t\t<ProjectPath Value="/Users/musician/Music" />
\t\t</{kind}>
"""
BUILD = ROOT / "build/linux"


def repeated(rounds, measure):
    """The results of calling `measure` once per round, after a warm-up."""
    return [measure() for _ in range(1 + rounds)][1:]


def start(work, rounds):
    """The time from the launch until the first page is drawn."""
    with Display() as display:
        starts = repeated(rounds, windows.Start(work, BUILD, display).measure)
    times = [(seconds, 1) for seconds in starts]
    yield report.compared("start to first page drawn", "one second", times, limit=1)


def install(work, rounds):
    """The installer's own share of a whole installation."""
    for files, size in (BIG, MANY):
        with Display() as display, folder_in(work) as folder:
            installation = windows.Installation(folder, BUILD, display, files, size)
            own = repeated(rounds, lambda: installation.measure()[0])
        payload = f"payload of {report.amount(size)} in {files:,} files"
        figure = f"installation without the archiver's runs, {payload}"
        times = [(seconds, 0.1) for seconds in own]
        yield report.compared(figure, "a tenth of a second", times, limit=1)


def memory(work, rounds):
    """The installer's peak memory in a whole run, which must not grow with the payload."""
    with Display() as display, folder_in(work) as big_folder, folder_in(work) as small_folder:
        big = windows.Installation(big_folder, BUILD, display, *BIG)
        small = windows.Installation(small_folder, BUILD, display, *SMALL)
        pairs = repeated(rounds, lambda: (big.measure()[1], small.measure()[1]))
    figure, against = (f"payload of {report.amount(size)}" for _, size in (BIG, SMALL))
    figure = f"peak memory, {figure}"
    yield report.compared(figure, against, pairs, limit=1.1, unit=report.amount)


def configuration(work, rounds):
    """Looking up the User Library, the last entry of a Library.cfg of usual and of extreme size."""
    other = LIBRARY_CFG_ENTRY.format(kind="LibraryProject", name="Klänge")
    user_library = LIBRARY_CFG_ENTRY.format(kind="UserLibrary", name="User Library")
    for size in (USUAL_CONFIGURATION, LARGE_CONFIGURATION):
        text = other * (size // len(other.encode())) + user_library
        written = (work / "Library.cfg").write_bytes(text.encode())
        runs = repeated(rounds, lambda: look_up(work))
        name = f"a Library.cfg of {report.amount(written)}"
        times = [(seconds, 1) for seconds, _ in runs]
        yield report.compared(f"User Library from {name}", "one second", times, limit=1)
        if size == LARGE_CONFIGURATION:
            growth = [(grown, written) for _, grown in runs]
            figure = f"memory for {name}"
            yield report.compared(figure, "the file", growth, limit=2, unit=report.amount)


def look_up(folder):
    """The seconds that one lookup took, and by how many bytes the process grew."""
    command = [BUILD / "bench_lookup", folder]
    answer = subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout
    nanoseconds, kilobytes, found = answer.splitlines()
    if found != "/Users/musician/Music/User Library":
        raise RuntimeError(f"found {found!r}")
    return int(nanoseconds) / 1e9, int(kilobytes) * 1024


ROWS = {"start": start, "install": install, "memory": memory, "library-cfg": configuration}


@contextlib.contextmanager
def folder_in(parent):
    """A temporary folder, removed even if the run is interrupted."""
    with tempfile.TemporaryDirectory(prefix="morvella-bench-", dir=parent) as folder:
        yield Path(folder).resolve()


def main():
    parser = argparse.ArgumentParser(prog="script/bench", description=__doc__)
    parser.add_argument("--row", choices=ROWS, help="measure only this row; writes nothing")
    parser.add_argument("--rounds", type=int, help=f"rounds instead of {ROUNDS}; writes nothing")
    options = parser.parse_args()
    # Raises SystemExit on SIGTERM, so that everything is cleaned up.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    subprocess.run([ROOT / "script/build"], check=True, stdout=sys.stderr)
    command = ["cmake", "--build", "--preset", "linux", "--target"]
    command += ["bench_lookup", "bench_stopwatch", "inspector"]
    subprocess.run(command, check=True, cwd=ROOT, stdout=sys.stderr)

    figures, machine = [], report.machine()
    for name in [options.row] if options.row else ROWS:
        print(f"{name} ...", file=sys.stderr, flush=True)
        with folder_in(roomy_folder(gigabytes=8)) as work:
            figures += ROWS[name](work, options.rounds or ROUNDS)
    print("\n".join(report.table(figures)))
    if not options.row and not options.rounds:
        report.write(ROOT / "docs/performance.md", figures, machine)


main()
