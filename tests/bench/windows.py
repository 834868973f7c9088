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
from installer import SIZE, STILL_PICTURES, Installer
from pages import SETTINGS
from waiting import wait_until

# How often the screen is polled, in seconds. It is in shared memory, so this asks no other process.
LOOK = 0.002
# How far below the top of the window's content the title of a page is, in pixels.
TITLE = 34
CONFIGURATION = """GNUSTEP_USER_CONFIG_FILE=
GNUSTEP_USER_DEFAULTS_DIR={folder}
GNUSTEP_USER_DIR_LIBRARY={folder}
"""


def wait_for_still_window(running):
    """Returns where the window lies once it is active and its picture no longer changes."""
    display = running.display
    last, seen = None, 0

    def is_still():
        nonlocal last, seen
        window = display.active_window()
        now = display.picture(display.area(window)) if window else None
        last, seen = now, seen + 1 if now and now == last else 0
        return seen >= STILL_PICTURES

    running.wait(is_still, "a still picture")
    return display.area(display.active_window())


class Page:
    """A picture of a page that has come to rest, to wait for in later runs."""

    def __init__(self, running):
        window = wait_for_still_window(running)
        # The line through the title is compared first: comparing the whole page each time would
        # slow down what is measured.
        title = window.y + window.height - SIZE[1] + TITLE
        self._areas = (Rectangle(window.x, title, window.width, 1), window)
        self._pictures = [running.display.picture(area) for area in self._areas]

    def is_shown(self, display):
        pairs = zip(self._areas, self._pictures)
        return all(display.picture(area) == picture for area, picture in pairs)

    def wait(self, display, what):
        wait_until(lambda: self.is_shown(display), what, seconds=600, interval=LOOK)


def peak_memory(process):
    """The most memory that a running process has held so far, in bytes."""
    with open(f"/proc/{process.pid}/status", encoding="ascii") as status:
        return next(int(line.split()[1]) * 1024 for line in status if line.startswith("VmHWM:"))


class Applications:
    """The installer and the smallest application on a display of their own. Use as a context."""

    def __init__(self, work, build):
        self._bundles = build / "Morvella Installer.app", build / "Smallest.app"
        self.stage = stages.make(work / "start")
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
            # The helpers that GNUstep starts run as long as any application does.
            other = self.smallest(stack.enter_context(Display()))
            wait_for_still_window(stack.enter_context(other))
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
        return Application(self.display, self._bundles[0], self.stage)

    def smallest(self, display=None):
        return Application(
            display or self.display,
            self._bundles[1],
            self.stage,
            arguments=[],
            environment={"GNUSTEP_CONFIG_FILE": self._configuration},
        )

    def first_page(self, start):
        with start() as running:
            return Page(running)

    def time_to(self, page, start):
        wait_until(lambda: not page.is_shown(self.display), "the last window to go")
        application = start()
        began = time.perf_counter()
        with application:
            page.wait(self.display, "the first page")
            return time.perf_counter() - began

    def smallest_memory(self):
        with self.smallest() as running:
            wait_for_still_window(running)
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
        self._work, self._display = work, display
        self._built = build / "Morvella Installer.app"
        self.bundle = work / self._built.name
        shutil.copytree(self._built, self.bundle)
        payload.make_archives(self.bundle / "Resources", work / "payload", files, size)
        shutil.rmtree(work / "payload")
        self._times = self._put_stopwatch_before(self.bundle / "Helpers/ditto", build)
        self._last_page = None

    @staticmethod
    def _put_stopwatch_before(program, build):
        """Returns the file to which bench_stopwatch adds the time of each run of the program."""
        program.rename(f"{program}.timed")
        shutil.copy(build / "bench_stopwatch", program)
        return program.with_name(f"{program.name}.times")

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
        """From the release of the settings page's button until the last page is drawn."""
        stage = self._fresh_stage()
        with Installer(self._display, self.bundle, stage, build=self._built.parent) as installer:
            installer.go_to(SETTINGS)
            installer.hold_down("Next")
            began = time.perf_counter()
            self._display.release_mouse()
            if not self._last_page:
                wait_until((stage.destination / ".Morvella.app").exists, "its end", seconds=600)
                self._last_page = Page(installer)
            self._last_page.wait(self._display, "the last page")
            return self._run(began, peak_memory(installer.process))

    def by_script(self):
        stage = self._fresh_stage()
        folders = (stage.user_library, stage.fonts, stage.applications, stage.shared)
        command = ["sh", Path(__file__).with_name("install.sh"), self.bundle, *folders]
        quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
        began = time.perf_counter()
        with subprocess.Popen(command, stdin=subprocess.DEVNULL, **quiet) as sh:

            def has_ended():
                # Polls the screen as for the installer, because that takes time, too.
                self._last_page.is_shown(self._display)
                return sh.poll() is not None

            wait_until(has_ended, "the script's end", seconds=600, interval=LOOK)
            run = self._run(began)
        if sh.returncode != 0:
            raise RuntimeError(f"the script ended with {sh.returncode}")
        return run
