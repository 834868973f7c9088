#!/usr/bin/env python3
"""A whole tour of an installer that was built with the address sanitizer leaves no memory behind.

Prints what the installer leaked and ends with status 1 if it leaked anything: whatever its own code
made or asked the frameworks for. What they lose by themselves, inside the calls that are named in
tests/support/leaks.supp, is theirs.
"""

import argparse
import os
import re
import shutil
import sys
from pathlib import Path

import folders
import stage as stages
from display import Display
from gate import Gate
from installer import Installer
from tour import Tour

ROOT = Path(__file__).resolve().parent.parent.parent
FRAMEWORKS = ROOT / "tests/support/leaks.supp"
# Stacks must reach through code without frame pointers, to show the caller.
SANITIZER = "detect_leaks=1:fast_unwind_on_malloc=0:malloc_context_size=24"


def leaks(report):
    """The title and the call stack, innermost first, of each block that nothing points to."""
    for block in re.split(r"\n\s*\n", report):
        title, *frames = block.strip().split("\n")
        if title.startswith("Direct leak"):
            yield title, frames


def is_ours(frames, frameworks, sources):
    """Whether the installer's own code made what leaked, or asked for it directly enough."""
    named = re.compile("|".join(map(re.escape, frameworks)))
    for frame in frames[1:]:  # The first is the sanitizer's.
        if named.search(frame):
            return False
        if f"{sources}/" in frame:
            return True
    return False


def take_tour(executable, folder):
    """What the installer wrote, the sanitizer's report at its end included."""
    stage = stages.make(folder / "stage", previous=True, unmounted=True)
    environment = {"ASAN_OPTIONS": SANITIZER, "LSAN_OPTIONS": "exitcode=0:max_leaks=0"}
    gate = Gate(folder / "gate", stage)
    options = {"environment": environment, "gate": gate}
    with Display() as display:
        with Installer(display, executable.parent, stage, **options) as installer:
            Tour(installer, gate, previous=True).walk()
            return installer.output


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("executable", type=Path, help="the installer, built with the sanitizer")
    parser.add_argument("sources", help="the folder of the sources, as the build names it")
    options = parser.parse_args()
    symbolizer = os.environ.get("ASAN_SYMBOLIZER_PATH") or shutil.which("llvm-symbolizer")
    if not symbolizer:
        sys.exit("The sanitizer needs llvm-symbolizer (Debian's package llvm) to name functions.")
    os.environ["PATH"] += f":{Path(symbolizer).parent}"
    frameworks = re.findall(r"^leak:(.+)$", FRAMEWORKS.read_text(), re.MULTILINE)
    with folders.temporary_folder("leaks") as folder:
        report = take_tour(options.executable.resolve(), folder)
    found = list(leaks(report))
    if not found:
        sys.exit("The sanitizer reported nothing at all, not even what the frameworks lose.")
    own = [
        (title, frames) for title, frames in found if is_ours(frames, frameworks, options.sources)
    ]
    for title, frames in own:
        print(title, *frames, "", sep="\n")
    print(f"{len(found) - len(own)} leaks of frameworks, {len(own)} of the installer")
    sys.exit(1 if own else 0)


if __name__ == "__main__":
    main()
