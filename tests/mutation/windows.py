"""Tries a change in the application's real window, with end-to-end tests that read whole pages."""

import shutil
import subprocess
from pathlib import Path

from parts import INTERFACE_FILE, ROOT
from workshop import run

BUNDLE = "Morvella Installer.app"
EXECUTABLE = f"{BUNDLE}/Morvella Installer"
# Few, as every change that they do not notice takes all of them.
TESTS = "tests/end_to_end/test_pages.py"
FAILED = 1  # pytest's status for tests that failed, and for nothing else


class Windows:
    """Builds the application once. One change is tried at a time: the tests watch the clock."""

    def __init__(self, build, folder, jobs):
        run(["cmake", "--build", build.folder, "--parallel", str(jobs)])
        self._build, self._folder = build, folder
        self._link = build.link_command(EXECUTABLE)
        shutil.copytree(build.folder / BUNDLE, folder / BUNDLE, symlinks=True)
        # Where the tests look for the modules that they load into the application.
        (folder / "tests").symlink_to(build.folder / "tests")
        self.check_unchanged()

    def check_unchanged(self):
        if self._fails():
            raise RuntimeError("the end-to-end tests fail without a change")

    def is_noticed(self, change):
        """The change is known to compile."""
        if change.path == INTERFACE_FILE:
            return self._is_noticed_in(self._resource(), change.content.encode())
        target = self._folder / "changed.o"
        changed = target.with_suffix(Path(change.path).suffix)
        changed.write_text(change.content, encoding="utf-8")
        run(self._build.compile_command(change.path, changed, target), cwd=self._build.folder)
        place, program = self._build.object_of(change.path), self._folder / "changed"
        words = [str(target) if word == place else word for word in self._link]
        words[words.index("-o") + 1] = str(program)
        run(words, cwd=self._build.folder)
        return self._is_noticed_in(self._folder / EXECUTABLE, program.read_bytes())

    def _resource(self):
        return next((self._folder / BUNDLE).rglob(Path(INTERFACE_FILE).name))

    def _is_noticed_in(self, file, content):
        """Whether the tests fail while a file of the bundle has another content."""
        before = file.read_bytes()
        file.write_bytes(content)
        try:
            return self._fails()
        finally:
            file.write_bytes(before)

    def _fails(self):
        command = ["/usr/bin/python3", "-B", "-m", "pytest", "-x", "-q", TESTS]
        command += ["-p", "no:cacheprovider", "--installer", self._folder / EXECUTABLE]
        ran = subprocess.run(command, cwd=ROOT, capture_output=True, text=True, check=False)
        if ran.returncode not in (0, FAILED):
            raise RuntimeError(f"pytest ended with {ran.returncode}:\n{ran.stdout}{ran.stderr}")
        return ran.returncode == FAILED
