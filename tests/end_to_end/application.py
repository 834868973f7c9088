"""An application in its real window, driven from outside as a person would drive it."""

import contextlib
import os
import re
import resource
import signal
import subprocess
import tempfile
from pathlib import Path

from processes import children, run_state
from waiting import PATIENCE, TimedOut, wait_until

LOG_PREFIX = re.compile(r"^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} .+?\[\d+:\d+\] ", re.MULTILINE)
STILL_PICTURES = 4


class Application:
    """One run of the application at `bundle`. Use as a context: it never outlives it."""

    def __init__(
        self,
        display,
        bundle,
        stage,
        arguments=None,
        *,
        environment=None,
        user=None,
        limits=None,
        evidence=None,
    ):
        """`limits` are its own limits of resources: {resource: number}.

        `evidence` is where a failed test finds what was written and shown, without an extension."""
        self.display, self.bundle, self.stage = display, Path(bundle), stage
        self._evidence = evidence
        self._arguments = stage.arguments if arguments is None else arguments
        self._environment = {
            "PATH": os.environ["PATH"],
            "DISPLAY": display.name,
            **stage.environment,
            **(environment or {}),
        }
        self._user, self._limits = user, limits or {}

    def __enter__(self):
        executable = self.bundle / self.bundle.stem
        self._output = tempfile.TemporaryFile()
        self.process = subprocess.Popen(
            [executable, *self._arguments],
            env={name: value for name, value in self._environment.items() if value is not None},
            stdin=subprocess.DEVNULL,
            stdout=self._output,
            stderr=self._output,
            preexec_fn=self._set_limits if self._limits else None,
            **({"user": self._user, "group": self._user, "extra_groups": []} if self._user else {}),
        )
        return self

    def _set_limits(self):
        for kind, limit in self._limits.items():
            resource.setrlimit(kind, (limit, limit))

    def __exit__(self, failure, *_):
        if failure and self._evidence:
            self._keep_evidence()
        if self.process.poll() is None:
            started = children(self.process.pid)
            self.process.kill()
            # What it waited for may be held, and would wait for ever.
            for child in started:
                with contextlib.suppress(ProcessLookupError):
                    os.kill(child, signal.SIGKILL)
        self.process.wait()
        self._output.close()

    def _keep_evidence(self):
        self.display.picture(self.display.screen).save(Path(f"{self._evidence}.png"))
        places = [self.display.area(window) for window in self.display.windows(self.bundle.stem)]
        pressed = f"Pressed last at {self.display.last_press}; windows at {places}"
        Path(f"{self._evidence}.log").write_text(f"{self.output}\n{pressed}\n", encoding="utf-8")

    # What it wrote

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
        self.wait(lambda: text in self.log, f"the log line {text!r}", seconds)

    # What it shows

    @property
    def window(self):
        title = self.bundle.stem
        return self.wait(lambda: self.display.windows(title), "the window")[0]

    @property
    def content(self):
        """Where the window's content lies on the screen, the menu in the window included."""
        return self.display.area(self.window)

    def wait_for_stillness(self, unlike=None):
        """The picture that the window shows as soon as the application rests and it stands still.

        Where `unlike` is a picture, the window must look different from it first.
        """
        content = self.content
        last, still = None, 0

        def rests():
            nonlocal last, still
            now = self.display.picture(content)
            calm = self._rests() and now == last and now != unlike
            last, still = now, still + 1 if calm else 0
            return now if still >= STILL_PICTURES else None

        return self.wait(rests, "another picture" if unlike else "a still picture")

    def wait_for_first_page(self):
        # Which may be that of its menu.
        self.wait(self.display.active_window, "a window to be active")
        return self.wait_for_stillness()

    def _rests(self):
        """Whether its main thread sleeps, rather than works or waits for the processor."""
        return run_state(self.process.pid) == "S"

    # Its end

    def close_window(self):
        self.display.key("alt+F4")

    def wait_for_end(self, seconds=PATIENCE):
        """Waits until the process ends by itself; its exit status."""
        self.wait(lambda: self.process.poll() is not None, "the application to end", seconds)
        return self.process.returncode

    def wait(self, happened, what, seconds=PATIENCE, **polling):
        def happened_or_died():
            ended = self.process.poll() is not None
            value = happened()
            if not value and ended:
                raise TimedOut(f"it ended with {self.process.returncode} before {what}")
            return value

        try:
            return wait_until(happened_or_died, what, seconds, **polling)
        except TimedOut as late:
            raise TimedOut(f"{late}\nit wrote:\n{self.output}") from None
