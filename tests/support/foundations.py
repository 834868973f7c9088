"""Checks that the machine has what the tests need, before they start."""

import os
import subprocess
import sys
from pathlib import Path

TESTS = Path(__file__).resolve().parent.parent
NOBODY = 65534
DISPLAY = "from display import Display\nwith Display():\n    pass\n"
BAD_PROGRAM = "int main(int count, char**) { int numbers[1] = {}; return numbers[count]; }\n"


def display():
    command = [sys.executable, "-B", "-c", DISPLAY]
    ran = subprocess.run(command, cwd=TESTS / "end_to_end", capture_output=True, text=True)
    if ran.returncode != 0:
        fail(f"no display can be started (xvfb, openbox): {ran.stderr.strip().splitlines()[-1]}")


def sanitizer(folder):
    program = folder / "bad-program"
    command = ["clang++", "-g", "-fsanitize=address", "-x", "c++", "-", "-o", program]
    built = subprocess.run(command, input=BAD_PROGRAM, capture_output=True, text=True)
    if built.returncode != 0:
        fail("clang cannot build with the address sanitizer (libclang-rt-dev)")
    report = subprocess.run([program], capture_output=True, text=True).stderr
    program.unlink()
    if " in main " not in report:
        fail("the address sanitizer cannot name functions: it cannot find llvm-symbolizer (llvm)")


def ordinary_user(folder):
    """Root bypasses file permissions, so it runs some tests as another user."""
    if os.geteuid() != 0:
        return
    try:
        ran = subprocess.run(["test", "-x", folder], user=NOBODY, group=NOBODY, extra_groups=[])
    except OSError:
        fail(f"root cannot become user {NOBODY}; run the tests as an ordinary user")
    if ran.returncode != 0:
        fail(f"user {NOBODY} cannot enter {folder}; set TMPDIR to a folder that everybody can")


def require(folder):
    """If something is missing, exits with one sentence that names it."""
    display()
    sanitizer(folder)
    ordinary_user(folder)


def fail(problem):
    sys.exit(f"script/test: {problem}")
