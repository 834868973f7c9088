"""The installer in its real window, driven from outside as a person would drive it."""

import functools
import os
import re
import subprocess
import tempfile
import threading
from pathlib import Path

from interface_file import InterfaceFile
from picture import Rectangle
from waiting import PATIENCE, TimedOut, wait_until

LOG_PREFIX = re.compile(r"^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} .+?\[\d+:\d+\] ", re.MULTILINE)
STILL_PICTURES = 5


class Installer:
    """One run of the application at `bundle`. Use as a context: it never outlives it."""

    def __init__(
        self, display, bundle, stage, arguments=None, *, environment=None, user=None, evidence=None
    ):
        """`evidence` is where a failed test finds what was written and shown, without an extension."""
        self.display, self.bundle, self.stage = display, Path(bundle), stage
        self._evidence = evidence
        self.interface = InterfaceFile(self.bundle / "Resources/MainMenu.xib")
        self._arguments = stage.arguments if arguments is None else arguments
        self._environment = {
            "PATH": os.environ["PATH"],
            "DISPLAY": display.name,
            **stage.environment,
            **(environment or {}),
        }
        self._user = user

    def __enter__(self):
        executable = self.bundle / self.bundle.stem
        self._output = tempfile.TemporaryFile()
        self.process = subprocess.Popen(
            [executable, *self._arguments],
            env={name: value for name, value in self._environment.items() if value is not None},
            stdin=subprocess.DEVNULL,
            stdout=self._output,
            stderr=self._output,
            **({"user": self._user, "group": self._user, "extra_groups": []} if self._user else {}),
        )
        return self

    def __exit__(self, failure, *_):
        if failure and self._evidence:
            self._keep_evidence()
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        self._output.close()

    def _keep_evidence(self):
        self.display.picture(self.display.screen).save(self._evidence.with_suffix(".png"))
        self._evidence.with_suffix(".log").write_text(self.output, encoding="utf-8")

    # What the installer wrote

    @property
    def output(self):
        """Everything it wrote to standard output and standard error."""
        size = os.fstat(self._output.fileno()).st_size
        return os.pread(self._output.fileno(), size, 0).decode("utf-8", "backslashreplace")

    @property
    def log(self):
        """The log lines' texts, in order; a text may hold line breaks of its own."""
        pieces = LOG_PREFIX.split(self.output)
        stray = [pieces[0]] if pieces[0] else []
        return stray + [piece.removesuffix("\n") for piece in pieces[1:]]

    def wait_for_line(self, text, seconds=PATIENCE):
        self._wait(lambda: text in self.log, f"the log line {text!r}", seconds)

    # What it shows

    @functools.cached_property
    def window(self):
        title = re.escape(self.interface.title)
        return self._wait(lambda: self.display.windows(title), "the window")[0]

    @property
    def _content(self):
        """Where the window's content lies; a menu in the window stands above it."""
        area = self.display.area(self.window)
        extra = area.height - self.interface.height
        return Rectangle(area.x, area.y + extra, area.width, self.interface.height)

    def picture(self):
        return self.display.picture(self._content)

    def wait_for_stillness(self, unlike=None, ignoring=()):
        """Waits until the installer rests and the window's picture stands still.

        Where `unlike` is a picture, the window must look different from it first, outside the areas
        in `ignoring`. Whatever spins is not looked at.
        """
        ignored = [*self.interface.spinners(), *ignoring]
        before = unlike.without(ignored) if unlike else None
        content = self._content
        last, still = None, 0

        def rests():
            nonlocal last, still
            now = self.display.picture(content)
            blanked = now.without(ignored)
            calm = self._rests() and blanked == last and blanked != before
            last, still = blanked, still + 1 if calm else 0
            return now if still >= STILL_PICTURES else None

        return self._wait(rests, "another picture" if unlike else "a still picture")

    def _rests(self):
        """Whether its main thread sleeps, rather than works or waits for the processor."""
        try:
            status = Path(f"/proc/{self.process.pid}/stat").read_text()
        except FileNotFoundError:
            return False
        return status.rpartition(")")[2].split()[0] == "S"

    def wait_for_first_page(self):
        self._wait(lambda: self.display.active_window() == self.window, "the window to be active")
        return self.wait_for_stillness()

    # What a person does

    def hold_down(self, area):
        """Presses the mouse on a control and waits until it has answered to that.

        GNUstep loses a release that comes while it still draws the pressed control.
        """
        content, before = self._content, self.picture()
        x, y = area.center
        self.display.press_mouse(content.x + x, content.y + y)
        return self.wait_for_stillness(unlike=before)

    def click(self, area):
        self.hold_down(area)
        self.display.release_mouse()

    def click_in_vain(self, area):
        """Clicks where nothing answers."""
        content = self._content
        x, y = area.center
        self.display.press_mouse(content.x + x, content.y + y)
        self.display.release_mouse()

    def press(self, action):
        """Clicks the button that sends `action` and waits for the window to look different."""
        button = self.interface.button(action)
        before = self.picture()
        self.click(button)
        return self.wait_for_stillness(unlike=before, ignoring=[button.grown(4)])

    def watch(self, act, line):
        """Acts, and returns the last picture that the window showed before the log held `line`."""
        # An installation may take no longer than the eye: whoever watches it must come first.
        os.setpriority(os.PRIO_PROCESS, self.process.pid, 19)
        content, last = self._content, self.picture()
        acting = threading.Thread(target=act)
        acting.start()

        def written():
            nonlocal last
            now = self.display.picture(content)
            if line in self.log:
                return True
            last = now
            return False

        self._wait(written, f"the log line {line!r}", interval=0.002)
        acting.join()
        return last

    def key(self, *names):
        self.display.key(*names)

    def press_second_button_of_sheet(self):
        """The first one has the focus."""
        self.key("Tab", "space")

    def untick_box_of_sheet(self):
        """The box comes before the buttons; they have the focus again afterwards."""
        ticked = self.picture()
        self.key("shift+Tab", "space", "Tab")
        self.wait_for_stillness(unlike=ticked)

    def close_window(self):
        self.display.key("alt+F4")

    def wait_for_end(self, seconds=PATIENCE):
        """Waits until the process ends by itself; its exit status."""
        self._wait(lambda: self.process.poll() is not None, "the installer to end", seconds)
        return self.process.returncode

    def _wait(self, happened, what, seconds=PATIENCE, **polling):
        def happened_or_died():
            ended = self.process.poll() is not None
            value = happened()
            if not value and ended:
                raise TimedOut(
                    f"the installer ended with {self.process.returncode} before {what}; "
                    f"it wrote:\n{self.output}"
                )
            return value

        try:
            return wait_until(happened_or_died, what, seconds, **polling)
        except TimedOut as late:
            raise TimedOut(f"{late}\nthe installer wrote:\n{self.output}") from None
