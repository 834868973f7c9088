"""Runs in a real window: the first page, a whole installation, and the memory of both."""

import contextlib
import os
import shutil
import signal
import subprocess
import time
from dataclasses import dataclass
from pathlib import Path

import payload
import stage as stages
from application import Application
from display import Display, Rectangle
from installer import Installer
from pages import FINISH, SETTINGS
from waiting import wait_until

# How often the screen is polled, in seconds. It is in shared memory, so this asks no other process.
LOOK = 0.002
CONFIGURATION = """GNUSTEP_USER_CONFIG_FILE=
GNUSTEP_USER_DEFAULTS_DIR={folder}
GNUSTEP_USER_DIR_LIBRARY={folder}
"""


class Screen:
    """A picture of the screen at rest, to wait for in later runs."""

    def __init__(self, display):
        last, since = None, time.monotonic()

        def rests():
            nonlocal last, since
            picture = display.picture()
            if picture != last:
                last, since = picture, time.monotonic()
            return time.monotonic() > since + 0.5

        wait_until(rests, "the screen to rest", seconds=60)
        # The middle line is compared first: comparing all of the screen each time would slow down
        # what is measured.
        screen = display.screen
        line = Rectangle(0, screen.height // 2, screen.width, 1)
        self._display = display
        self._pictures = [(area, display.picture(area)) for area in (line, screen)]

    def is_shown(self):
        return all(self._display.picture(area) == picture for area, picture in self._pictures)

    def wait(self, what):
        wait_until(self.is_shown, what, seconds=600, interval=LOOK)


def peak_memory(process):
    """The most memory that a running process has held so far, in bytes."""
    with open(f"/proc/{process.pid}/status", encoding="ascii") as status:
        return next(int(line.split()[1]) * 1024 for line in status if line.startswith("VmHWM:"))


class Applications:
    """The installer and the smallest application on a display of their own. Use as a context."""

    def __init__(self, work, build):
        self._installer, self._smallest = build / "Morvella Installer.app", build / "Smallest.app"
        self._stage = stages.make(work / "start")
        settings = work / "settings"
        settings.mkdir()
        configuration = work / "GNUstep.conf"
        configuration.write_text(CONFIGURATION.format(folder=settings))
        configuration.chmod(0o600)
        self._configuration = str(configuration)

    def __enter__(self):
        with contextlib.ExitStack() as stack:
            stack.callback(self._end_helpers)
            self.display = stack.enter_context(Display())
            self._empty = Screen(self.display)
            # The helpers that GNUstep starts run as long as any application does.
            others = stack.enter_context(Display())
            stack.enter_context(self.smallest(others))
            Screen(others)
            self._stack = stack.pop_all()
        return self

    def __exit__(self, *failure):
        self._stack.__exit__(*failure)

    def _end_helpers(self):
        """They would end by themselves later, and write their settings then."""
        for environment in Path("/proc").glob("[0-9]*/environ"):
            with contextlib.suppress(OSError):
                if self._configuration.encode() in environment.read_bytes():
                    os.kill(int(environment.parent.name), signal.SIGKILL)

    def installer(self):
        return Application(self.display, self._installer, self._stage)

    def smallest(self, display=None):
        return Application(
            display or self.display,
            self._smallest,
            self._stage,
            arguments=[],
            environment={"GNUSTEP_CONFIG_FILE": self._configuration},
        )

    def first_page(self, start):
        with start():
            wait_until(lambda: not self._empty.is_shown(), "a window", seconds=60)
            return Screen(self.display)

    def time_to(self, page, start):
        self._empty.wait("the last window to go")
        began = time.perf_counter()
        with start():
            page.wait("the first page")
            return time.perf_counter() - began

    def smallest_memory(self):
        self._empty.wait("the last window to go")
        with self.smallest() as running:
            wait_until(lambda: not self._empty.is_shown(), "a window", seconds=60)
            Screen(self.display)
            return peak_memory(running.process)


@dataclass(frozen=True)
class Run:
    """One installation: its seconds, with and without the archiver's runs, and its peak memory."""

    seconds: float
    outside: float
    memory: int = 0


class Installation:
    """A bundle with a payload of a given size, to be installed on one fresh stage after another."""

    def __init__(self, work, build, display, files, size):
        self._work, self._build, self._display = work, build, display
        self._bundle = work / "Morvella Installer.app"
        shutil.copytree(build / self._bundle.name, self._bundle)
        payload.make_archives(self._bundle / "Resources", work / "payload", files, size)
        shutil.rmtree(work / "payload")
        self._put_stopwatch_before(self._bundle / "Helpers/ditto")
        self._last_page = None

    def _put_stopwatch_before(self, program):
        program.rename(f"{program}.timed")
        shutil.copy(self._build / "bench_stopwatch", program)
        self._times = Path(f"{program}.times")

    def _fresh_stage(self):
        shutil.rmtree(self._work / "stage", ignore_errors=True)
        stage = stages.make(self._work / "stage")
        self._times.unlink(missing_ok=True)
        os.sync()  # so that the disk has no work left from the run before
        return stage

    def _run(self, began, memory=0):
        seconds = time.perf_counter() - began
        archiver = [int(line) / 1e9 for line in self._times.read_text().splitlines()]
        if len(archiver) != len(payload.ARCHIVES):
            raise RuntimeError(f"the archiver ran {len(archiver)} times")
        return Run(seconds, seconds - sum(archiver), memory)

    def by_installer(self):
        """From the press of the settings page's button until the last page is drawn."""
        stage = self._fresh_stage()
        with Installer(self._display, self._bundle, stage, build=self._build) as installer:
            installer.go_to(SETTINGS)
            installer.wait_for_button("Next")
            began = time.perf_counter()
            installer.perform("Next")
            if not self._last_page:
                installer.wait_for(FINISH, seconds=600)
                self._last_page = Screen(self._display)
            self._last_page.wait("the last page")
            return self._run(began, peak_memory(installer.process))

    def by_script(self):
        stage = self._fresh_stage()
        folders = (stage.user_library, stage.fonts, stage.applications, stage.shared)
        command = ["sh", Path(__file__).with_name("install.sh"), self._bundle, *folders]
        quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
        began = time.perf_counter()
        with subprocess.Popen(command, stdin=subprocess.DEVNULL, **quiet) as sh:

            def has_ended():
                # Polls the screen as for the installer, because that takes time, too.
                self._last_page.is_shown()
                return sh.poll() is not None

            wait_until(has_ended, "the script's end", seconds=600, interval=LOOK)
            run = self._run(began)
        if sh.returncode != 0:
            raise RuntimeError(f"the script ended with {sh.returncode}")
        return run
