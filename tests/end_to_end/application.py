"""A program with a window, running in its own process."""

import os
import re
import signal
import subprocess
import tempfile
from contextlib import suppress
from pathlib import Path

from waiting import PATIENCE, TimedOut, wait_until

LOG_PREFIX = re.compile(r"^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} .+?\[\d+:\d+\] ", re.MULTILINE)


class Application:
    """Use as a context manager: the process never outlives it."""

    def __init__(
        self, display, bundle, stage, arguments=None, environment=None, user=None, evidence=None
    ):
        """`evidence` is the path, without an extension, of the log and picture of a failure."""
        self.display, self.bundle, self.stage = display, Path(bundle), stage
        self.environment = {
            "PATH": os.environ["PATH"],
            "DISPLAY": display.name,
            "TMPDIR": tempfile.gettempdir(),
            **stage.environment,
            **(environment or {}),
        }
        self._arguments = stage.arguments if arguments is None else arguments
        self._user, self._evidence = user, evidence

    def __enter__(self):
        self._output = tempfile.TemporaryFile()
        as_user = {"user": self._user, "group": self._user, "extra_groups": []}
        self.process = subprocess.Popen(
            [self.bundle / self.bundle.stem, *self._arguments],
            env={name: value for name, value in self.environment.items() if value is not None},
            stdin=subprocess.DEVNULL,
            stdout=self._output,
            stderr=self._output,
            **(as_user if self._user else {}),
        )
        return self

    def __exit__(self, failure, *_):
        if failure and self._evidence:
            self.display.picture().save(f"{self._evidence}.png")
            Path(f"{self._evidence}.log").write_text(self.output, encoding="utf-8")
            print(f"Its log and a picture: {self._evidence}.*")
        if self.process.poll() is None:
            # Its children may be held by the gate and would never end.
            started = descendants(self.process.pid)
            self.process.kill()
            kill(started)
        self.process.wait()
        self._output.close()

    @property
    def output(self):
        """Everything it wrote to standard output and standard error."""
        size = os.fstat(self._output.fileno()).st_size
        return os.pread(self._output.fileno(), size, 0).decode("utf-8", "backslashreplace")

    @property
    def log(self):
        """The texts of the log lines, in order; a text may contain line breaks."""
        first, *lines = LOG_PREFIX.split(self.output)
        return ([first] if first else []) + [line.removesuffix("\n") for line in lines]

    def wait(self, happened, what, seconds=PATIENCE, **polling):
        """Returns the first true value of `happened()`; fails if the process ends first."""

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

    def wait_for_end(self, seconds=PATIENCE):
        """Waits until the process and its children have ended; returns the exit status."""
        self.wait(lambda: self.process.poll() is not None, "it to end", seconds)
        wait_until(lambda: not self.has_running_children(), "its children to end", seconds)
        return self.process.returncode

    def has_running_children(self):
        """Whether any process that it started, Live included, still runs; zombies do not count."""
        # They inherit its environment.
        stage = f"MORVELLA_STAGE={self.stage.root}".encode()
        for environment in Path("/proc").glob("[0-9]*/environ"):
            with suppress(OSError):
                if stage in environment.read_bytes().split(b"\0"):
                    return True
        return False


def descendants(process):
    """Its child processes, and theirs."""
    try:
        children = Path(f"/proc/{process}/task/{process}/children").read_text().split()
    except (FileNotFoundError, ProcessLookupError):
        return []
    return [each for child in map(int, children) for each in [child, *descendants(child)]]


def kill(processes):
    for process in processes:
        with suppress(ProcessLookupError):
            os.kill(process, signal.SIGKILL)
