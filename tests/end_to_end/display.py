"""A screen of our own: Xvfb with a window manager, real mouse clicks and real keys."""

import mmap
import os
import shutil
import subprocess
import tempfile
from pathlib import Path

from picture import Picture, Rectangle
from waiting import wait_until


class Display:
    """Use as a context; nothing of it is left behind."""

    screen = Rectangle(0, 0, 1280, 960)

    def __enter__(self):
        self._folder = Path(tempfile.mkdtemp(prefix="morvella-display-"))
        self._processes = []
        try:
            self.name = self._start_server()
            self._environment = {"PATH": os.environ["PATH"], "DISPLAY": self.name}
            self._start_window_manager()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self._processes):
            process.terminate()
            process.wait()
        shutil.rmtree(self._folder)

    def _start_server(self):
        reading, writing = os.pipe()
        size = f"{self.screen.width}x{self.screen.height}x24"
        command = ["Xvfb", "-displayfd", str(writing), "-screen", "0", size]
        # Access control is off because some tests run the installer as another user.
        command += ["-fbdir", str(self._folder), "-nolisten", "tcp", "-ac", "-nocursor", "-noreset"]
        with open(self._folder / "server.log", "wb") as log:
            server = subprocess.Popen(command, pass_fds=[writing], stdout=log, stderr=log)
        self._processes.append(server)
        os.close(writing)
        with os.fdopen(reading) as answer:
            number = answer.readline().strip()
        if not number:
            raise RuntimeError("Xvfb did not start: " + (self._folder / "server.log").read_text())
        return f":{number}"

    def _start_window_manager(self):
        environment = {**self._environment, "HOME": str(self._folder)}
        with open(self._folder / "window-manager.log", "wb") as log:
            manager = subprocess.Popen(
                ["openbox", "--sm-disable"], env=environment, stdout=log, stderr=log
            )
        self._processes.append(manager)
        wait_until(lambda: self._asks("get_num_desktops"), "the window manager")

    def _run(self, *command):
        return subprocess.run(
            command,
            env=self._environment,
            stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL,
            text=True,
            check=True,
        ).stdout

    def _asks(self, *question):
        """xdotool's answer, or nothing if it has none."""
        try:
            return self._run("xdotool", *question).strip()
        except subprocess.CalledProcessError:
            return ""

    def windows(self, title):
        """The visible windows whose title is exactly this."""
        return self._asks("search", "--onlyvisible", "--name", f"^{title}$").split()

    def area(self, window):
        """Where the content of a window lies on the screen."""
        # xdotool counts the frame that the window manager draws twice.
        answer = self._run("xwininfo", "-id", window)
        lines = dict(line.strip().split(": ", 1) for line in answer.splitlines() if ": " in line)
        names = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
        return Rectangle(*(int(lines[name]) for name in names))

    def picture(self, area):
        with open(self._folder / "Xvfb_screen0", "rb") as file:
            with mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ) as frame_buffer:
                return Picture.of_screen(frame_buffer, area)

    def press_mouse(self, x, y):
        self._run("xdotool", "mousemove", str(x), str(y), "mousedown", "1")

    def release_mouse(self):
        self._run("xdotool", "mouseup", "1")

    def key(self, *names):
        self._run("xdotool", "key", *names)

    def active_window(self):
        return self._asks("getactivewindow")
