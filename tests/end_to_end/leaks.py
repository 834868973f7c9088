#!/usr/bin/env python3
"""Takes a whole tour of an installer built with the address sanitizer, and fails if it leaks.

Leaks inside the frameworks' own calls, which tests/support/leaks.supp names, are only counted.
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
# Unwinds through code without frame pointers too, so that stacks reach the caller.
SANITIZER = "detect_leaks=1:fast_unwind_on_malloc=0:malloc_context_size=24"


def is_ours(block, frameworks, sources):
    """Whether the installer's own code allocated the block, not a framework on its own."""
    for frame in block.split("\n")[2:]:  # Below the title and the sanitizer's own frame.
        if any(name in frame for name in frameworks):
            return False
        if f"{sources}/" in frame:
            return True
    return False


def take_tour(executable, folder):
    """Returns the installer's output, which ends with the sanitizer's report."""
    stage = stages.make(folder / "stage", previous=True, unmounted=True)
    environment = {"ASAN_OPTIONS": SANITIZER, "LSAN_OPTIONS": "exitcode=0:max_leaks=0"}
    gate = Gate(folder / "gate", stage)
    options = {"environment": environment, "gate": gate}
    with Display() as display:
        with Installer(display, executable.parent, stage, **options) as installer:
            Tour(installer, lambda name, picture: None).walk()
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
    blocks = re.split(r"\n\s*\n", report)
    found = [block.strip() for block in blocks if block.strip().startswith("Direct leak")]
    if not found:
        sys.exit("The sanitizer reported nothing at all, not even the leaks of the frameworks.")
    own = [block for block in found if is_ours(block, frameworks, options.sources)]
    for block in own:
        print(block, end="\n\n")
    print(f"{len(found) - len(own)} leaks of frameworks, {len(own)} of the installer")
    sys.exit(1 if own else 0)


if __name__ == "__main__":
    main()
