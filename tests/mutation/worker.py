"""Tries one change at a time in a folder of its own."""

import io
import shutil
import subprocess
import sys
import unittest
from pathlib import Path

from parts import ROOT
from workshop import PROGRAMS

# Without an end, tests take all the time or memory that they can get. On a busy machine the time on
# the clock says little.
LIMITS = ["prlimit", "--cpu=10", f"--as={4 << 30}", "--core=0"]
OPTIONS = ["--gtest_brief=1", "--gtest_fail_fast"]
# Tests that take their time, with files, child processes and timers, run only after the others.
SLOW = "*FilesTest.*:FoundationPathsTest.*:RunLoopTest.*:HomeTrashTest.*:BundlesTest.*:TasksTest.*"
SECONDS = 40


def program_for(change):
    """Which of the test programs is to notice a change of a source."""
    return "cocoa" if change.path.endswith(".mm") else "core"


class Worker:
    """Says of a change whether a test notices it; nothing if it does not compile."""

    def __init__(self, build, folder):
        self._build, self._folder = build, folder
        self._links = {name: build.link_command(PROGRAMS[name]) for name in build.names}
        folder.mkdir(parents=True)

    def check_unchanged(self):
        """Raises if the tests fail on the unchanged project."""
        for name in self._links:
            failure = self._failure(self._linked(name, {}))
            if failure is not None:
                raise RuntimeError(f"{name}: the tests fail without a change:\n{failure}")
        if "core" in self._links and self._joined(self._folder) is None:
            raise RuntimeError("the core and its tests do not compile, each as one source")

    def is_noticed(self, change):
        suffix = Path(change.path).suffix
        if suffix == ".hpp":
            return self._is_noticed_in_header(change)
        changed, target = self._folder / f"changed{suffix}", self._folder / "changed.o"
        # The words of a macro for the file's own name stay what they are.
        changed.write_text(change.content, encoding="utf-8")
        if not self._done(self._build.compile_command(change.path, changed, target)):
            return None
        name, place = program_for(change), self._build.object_of(change.path)
        if suffix == ".mm" and place not in self._links[name]:
            return False  # the application's entry: no unit test can have it
        program = self._linked(name, {place: target})
        return None if program is None else self._fails(program)

    def _is_noticed_in_header(self, change):
        overlay = self._folder / "overlay"
        shutil.rmtree(overlay, ignore_errors=True)
        header = overlay / change.path
        header.parent.mkdir(parents=True)
        header.write_text(change.content, encoding="utf-8")
        program = self._joined(overlay)
        return None if program is None else self._fails(program)

    def _joined(self, overlay):
        """The core's test program, with headers of `overlay` in the place of their own."""
        objects = []
        for name, places in JOINED.items():
            objects.append(self._folder / f"{name}.o")
            sources = self._build.sources_of(*places)
            if not self._done(self._build.joined_command(sources, overlay, objects[-1])):
                return None
        return self._linked("core", {}, objects)

    def _linked(self, name, replaced, only=()):
        """The test program with other objects in the place of its own; with `only`, no others."""
        program = self._folder / f"{name}_tests"
        words = list(self._links[name])
        words[words.index("-o") + 1] = str(program)
        if only:
            words = [word for word in words if not word.endswith((".o", "_core.a", "_support.a"))]
        first = words.index("-o")
        # An object that stands in a library is taken from there only if it is still wanted.
        extra = [str(new) for old, new in replaced.items() if old not in words]
        words = [str(replaced.get(word, word)) for word in words]
        words[first:first] = [*extra, *map(str, only)]
        return program if self._done(words) else None

    def _done(self, command):
        ran = subprocess.run(command, cwd=self._build.folder, capture_output=True, check=False)
        return ran.returncode == 0

    def _fails(self, program):
        return self._failure(program) is not None

    def _failure(self, program):
        """What is printed when a test fails; None if none does."""
        # A change may have the tests remove the folder that they run in.
        place = self._folder / "place"
        for tests in (f"-{SLOW}", SLOW):
            place.mkdir(exist_ok=True)
            command = [*LIMITS, program, *OPTIONS, f"--gtest_filter={tests}"]
            try:
                ran = subprocess.run(
                    command, cwd=place, capture_output=True, timeout=SECONDS, check=False
                )
            except subprocess.TimeoutExpired:
                return f"no end after {SECONDS} s"
            if ran.returncode != 0:
                return (ran.stdout + ran.stderr).decode(errors="replace")
        return None


# What is compiled as one when a header has changed: its name and the folders of its objects.
JOINED = {
    "core": ("CMakeFiles/morvella_core.dir/",),
    "tests": ("tests/CMakeFiles/",),
}


def interface_file_is_noticed(change, folder):
    """Whether the tests that read the interface file as data fail."""
    tests = ROOT / "tests/interface_file"
    sys.path.insert(0, str(tests))
    import test_interface_file  # pylint: disable=import-outside-toplevel

    sys.path.remove(str(tests))
    test_interface_file.FILE = folder / "MainMenu.xib"
    test_interface_file.FILE.write_text(change.content, encoding="utf-8")
    suite = unittest.defaultTestLoader.loadTestsFromModule(test_interface_file)
    return not unittest.TextTestRunner(io.StringIO(), failfast=True).run(suite).wasSuccessful()
