"""Measures the start, the installation and the peak memory of the installer in its real window."""

import os
import re
import shutil
import time
from pathlib import Path

import payload
import stage as stages
from application import Application
from display import Rectangle
from installer import Installer
from pages import FINISH, SETTINGS
from waiting import wait_until

BUNDLE = "Morvella Installer.app"


class Screen:
    """A screenshot of the settled screen, to wait for in later runs."""

    def __init__(self, display):
        last, since = None, time.monotonic()

        def is_settled():
            nonlocal last, since
            picture = display.picture()
            if picture != last:
                last, since = picture, time.monotonic()
            return time.monotonic() > since + 0.5

        wait_until(is_settled, "the screen to settle", seconds=60)
        # The middle line is compared first, because comparing the whole screen is slow.
        screen = display.screen
        line = Rectangle(0, screen.height // 2, screen.width, 1)
        self._display = display
        self._pictures = [(area, display.picture(area)) for area in (line, screen)]

    def is_shown(self):
        return all(self._display.picture(area) == picture for area, picture in self._pictures)

    def wait(self, what):
        # Polling this often is cheap, because the screen is in shared memory.
        wait_until(self.is_shown, what, seconds=600, interval=0.002)


class Start:
    def __init__(self, work, build, display):
        stage = stages.make(work / "stage")
        self._launch = lambda: Application(display, build / BUNDLE, stage)
        self._empty = Screen(display)
        with self._launch():
            wait_until(lambda: not self._empty.is_shown(), "a window", seconds=60)
            self._page = Screen(display)

    def measure(self):
        """The seconds from the launch until the first page is drawn."""
        self._empty.wait("the previous window to close")
        began = time.perf_counter()
        with self._launch():
            self._page.wait("the first page")
            return time.perf_counter() - began


class Installation:
    """A bundle with a payload of a given size. Each measurement installs it on a new stage."""

    def __init__(self, work, build, display, files, size):
        self._work, self._build, self._display = work, build, display
        self._bundle = work / BUNDLE
        shutil.copytree(build / BUNDLE, self._bundle)
        payload.make_archives(self._bundle / "Resources", work / "payload", files, size)
        shutil.rmtree(work / "payload")
        archiver = self._bundle / "Helpers/ditto"
        archiver.rename(f"{archiver}.timed")
        shutil.copy(build / "bench_stopwatch", archiver)
        self._times = Path(f"{archiver}.times")
        self._last_page = None

    def measure(self):
        """The seconds from the release of the settings page's button until the last page is drawn,
        without the archiver's runs, and the installer's peak memory."""
        shutil.rmtree(self._work / "stage", ignore_errors=True)
        stage = stages.make(self._work / "stage")
        self._times.unlink(missing_ok=True)
        os.sync()  # so that no writes of the previous run are pending
        with Installer(self._display, self._bundle, stage, build=self._build) as installer:
            installer.go_to(SETTINGS)
            installer.wait_for_button("Next")
            installer.hold_down("Next")
            began = time.perf_counter()
            self._display.release_mouse()
            if not self._last_page:
                installer.wait_for(FINISH, seconds=600)
                self._last_page = Screen(self._display)
            self._last_page.wait("the last page")
            seconds = time.perf_counter() - began
            status = Path(f"/proc/{installer.process.pid}/status").read_text()
        memory = int(re.search(r"^VmHWM:\s*(\d+)", status, re.MULTILINE)[1]) * 1024
        archiver = [int(line) / 1e9 for line in self._times.read_text().splitlines()]
        if len(archiver) != len(payload.ARCHIVES):
            raise RuntimeError(f"the archiver ran {len(archiver)} times")
        return seconds - sum(archiver), memory
