"""What is seen in a window: the first page, a whole installation, and the memory of both."""

import contextlib
import os
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "end_to_end"))

import stage as stages  # noqa: E402
from display import Display  # noqa: E402
from installer import Installer  # noqa: E402
from picture import Rectangle  # noqa: E402
from waiting import wait_until  # noqa: E402

import measure  # noqa: E402
import payload  # noqa: E402

# How often the screen is looked at, in seconds. It lies in shared memory: nobody is asked for it.
LOOK = 0.002
FONTS = ("Archivo-Medium.ttf", "OpenSans-Regular.ttf")
CONFIGURATION = """GNUSTEP_USER_CONFIG_FILE=
GNUSTEP_USER_DEFAULTS_DIR={folder}
GNUSTEP_USER_DIR_LIBRARY={folder}
"""


class Page:
    """A page as it looks when it stands still, to be waited for in later runs."""

    def __init__(self, installer, picture):
        self._area, self._picture = installer._content, picture
        # Only this line, through the title, is looked at all the time: looking at the whole page
        # takes so much of the machine that it would slow down what is measured.
        self._line = Rectangle(self._area.x, self._area.y + 34, self._area.width, 1)
        self._line_picture = installer.display.picture(self._line)

    def is_shown(self, display):
        return (
            display.picture(self._line) == self._line_picture
            and display.picture(self._area) == self._picture
        )

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
        return Installer(self.display, self._programs.bundle, self.stage)

    def smallest(self, display=None):
        return Installer(
            display or self.display,
            self._programs.smallest,
            self.stage,
            arguments=[],
            environment={"GNUSTEP_CONFIG_FILE": self._configuration},
        )

    def first_page(self, start):
        with start() as running:
            return Page(running, running.wait_for_first_page())

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


class Installation:
    """A bundle with a payload of a given size, to be installed on one fresh stage after another."""

    def __init__(self, work, programs, display, files, size):
        self._work, self._display = work, display
        self.bundle = work / programs.bundle.name
        shutil.copytree(programs.bundle, self.bundle)
        payload.make_archives(self.bundle / "Resources", work / "payload", files, size)
        shutil.rmtree(work / "payload")
        self._last_page = None
        self.memory = []

    def _fresh_stage(self):
        shutil.rmtree(self._work / "stage", ignore_errors=True)
        stage = stages.make(self._work / "stage")
        measure.settle()
        return stage

    def by_installer(self):
        """The seconds from the release of the settings page's button until the last page is shown."""
        stage = self._fresh_stage()
        with Installer(self._display, self.bundle, stage) as installer:
            installer.wait_for_first_page()
            installer.press("welcomeButton:")
            installer.press("licenseAcceptedButton:")
            before = installer.picture()
            content, button = installer._content, installer.interface.button("beginInstallButton:")
            x, y = button.center
            self._display.press_mouse(content.x + x, content.y + y)
            installer.wait_for_stillness(unlike=before)
            began = time.perf_counter()
            self._display.release_mouse()
            if not self._last_page:
                wait_until(stage_is_complete(stage), "the installation", seconds=600)
                self._last_page = Page(installer, installer.wait_for_stillness())
            self._last_page.wait(self._display, "the last page")
            seconds = time.perf_counter() - began
            self.memory.append(measure.peak_memory(installer.process))
        return seconds

    def by_script(self):
        stage = self._fresh_stage()
        folders = (stage.user_library, stage.fonts, stage.applications, stage.shared)
        script = Path(__file__).resolve().with_name("install.sh")
        began = time.perf_counter()
        command = ["sh", script, self.bundle, *folders]
        quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
        with subprocess.Popen(command, stdin=subprocess.DEVNULL, **quiet) as sh:

            def has_ended():
                # The screen is looked at as for the installer, because that takes some time, too.
                self._last_page.is_shown(self._display)
                return sh.poll() is not None

            wait_until(has_ended, "the script's end", seconds=600, interval=LOOK)
            seconds = time.perf_counter() - began
        if sh.returncode != 0:
            raise RuntimeError(f"the script ended with {sh.returncode}")
        return seconds


def stage_is_complete(stage):
    return (stage.destination / ".Morvella.app").exists
