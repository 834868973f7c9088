"""What is seen in a window: the first page, a whole installation, and the memory of both."""

import contextlib
import os
import shutil
import signal
import subprocess
import sys
import time
from dataclasses import dataclass
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "end_to_end"))

import stage as stages  # noqa: E402
from application import Application  # noqa: E402
from display import Display  # noqa: E402
from descriptions import LICENCE, SETTINGS, WELCOME  # noqa: E402
from installer import SIZE, Installer  # noqa: E402
from picture import Rectangle  # noqa: E402
from waiting import wait_until  # noqa: E402

import measure  # noqa: E402
import payload  # noqa: E402
from stopwatch import Stopwatch  # noqa: E402

# How often the screen is looked at, in seconds. It lies in shared memory: nobody is asked for it.
LOOK = 0.002
# Where the title of a page lies below the upper edge of the window's content, in pixels.
TITLE = 34
CONFIGURATION = """GNUSTEP_USER_CONFIG_FILE=
GNUSTEP_USER_DEFAULTS_DIR={folder}
GNUSTEP_USER_DIR_LIBRARY={folder}
"""


class Page:
    """A page as it looks when it stands still, to be waited for in later runs."""

    def __init__(self, running):
        running.wait_for_stillness()
        window = running.display.area(running.window)
        # Only this line, through the title, is looked at all the time: looking at the whole page
        # takes so much of the machine that it would slow down what is measured.
        title = window.y + window.height - SIZE[1] + TITLE
        self._areas = (Rectangle(window.x, title, window.width, 1), window)
        self._pictures = [running.display.picture(area) for area in self._areas]

    def is_shown(self, display):
        pairs = zip(self._areas, self._pictures)
        return all(display.picture(area) == picture for area, picture in pairs)

    def wait(self, display, what):
        wait_until(lambda: self.is_shown(display), what, seconds=600, interval=LOOK)


class Applications:
    """The installer and the smallest application on a display of their own. Use as a context."""

    def __init__(self, work, programs):
        self._work, self._programs = work, programs
        self.stage = stages.make(work / "start")
        settings = work / "settings"
        settings.mkdir()
        configuration = work / "GNUstep.conf"
        configuration.write_text(CONFIGURATION.format(folder=settings))
        configuration.chmod(0o600)
        self._configuration = str(configuration)

    def __enter__(self):
        self._others_display = Display().__enter__()
        self.display = Display().__enter__()
        # The helpers that GNUstep starts for an application run as long as some application does.
        self._other = self.smallest(self._others_display).__enter__()
        self._other.wait_for_stillness()
        return self

    def __exit__(self, *failure):
        self._other.__exit__(*failure)
        self.display.__exit__(*failure)
        self._others_display.__exit__(*failure)
        self._end_helpers()

    def _end_helpers(self):
        """They would end by themselves later, and write to their settings then."""
        for environment in Path("/proc").glob("[0-9]*/environ"):
            with contextlib.suppress(OSError):
                if self._configuration.encode() in environment.read_bytes():
                    os.kill(int(environment.parent.name), signal.SIGKILL)

    def installer(self):
        return Application(self.display, self._programs.bundle, self.stage)

    def smallest(self, display=None):
        return Application(
            display or self.display,
            self._programs.smallest,
            self.stage,
            arguments=[],
            environment={"GNUSTEP_CONFIG_FILE": self._configuration},
        )

    def first_page(self, start):
        with start() as running:
            running.wait_for_first_page()
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
            running.wait_for_stillness()
            return measure.peak_memory(running.process)


@dataclass(frozen=True)
class Run:
    """One installation: the seconds of the whole and without the archiver's runs."""

    seconds: float
    outside: float
    memory: int = 0  # The installer's own peak, in bytes.


class Installation:
    """A bundle with a payload of a given size, to be installed on one fresh stage after another."""

    def __init__(self, work, programs, display, files, size):
        self._work, self._display = work, display
        self.bundle, self._built = work / programs.bundle.name, programs.bundle
        shutil.copytree(programs.bundle, self.bundle)
        payload.make_archives(self.bundle / "Resources", work / "payload", files, size)
        shutil.rmtree(work / "payload")
        self._archiver = Stopwatch(programs, self.bundle / "Helpers/ditto")
        self._last_page = None

    def _fresh_stage(self):
        shutil.rmtree(self._work / "stage", ignore_errors=True)
        stage = stages.make(self._work / "stage")
        self._archiver.reset()
        measure.settle()
        return stage

    def _run(self, began, memory=0):
        seconds = time.perf_counter() - began
        return Run(seconds, seconds - self._archiver.seconds(runs=len(payload.ARCHIVES)), memory)

    def by_installer(self):
        """From the release of the settings page's button until the last page is shown."""
        stage = self._fresh_stage()
        with Installer(self._display, self.bundle, stage, built=self._built) as installer:
            installer.wait_for_page(WELCOME)
            installer.press("Next")
            installer.wait_for_page(LICENCE)
            installer.press("Accept")
            installer.wait_for_choice(SETTINGS)
            installer.hold_down("Next")
            began = time.perf_counter()
            self._display.release_mouse()
            if not self._last_page:
                wait_until((stage.destination / ".Morvella.app").exists, "its end", seconds=600)
                self._last_page = Page(installer)
            self._last_page.wait(self._display, "the last page")
            return self._run(began, measure.peak_memory(installer.process))

    def by_script(self):
        stage = self._fresh_stage()
        folders = (stage.user_library, stage.fonts, stage.applications, stage.shared)
        command = ["sh", Path(__file__).with_name("install.sh"), self.bundle, *folders]
        quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
        began = time.perf_counter()
        with subprocess.Popen(command, stdin=subprocess.DEVNULL, **quiet) as sh:

            def has_ended():
                # The screen is looked at as for the installer, because that takes some time, too.
                self._last_page.is_shown(self._display)
                return sh.poll() is not None

            wait_until(has_ended, "the script's end", seconds=600, interval=LOOK)
            run = self._run(began)
        if sh.returncode != 0:
            raise RuntimeError(f"the script ended with {sh.returncode}")
        return run
