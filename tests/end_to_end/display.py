"""A screen of our own: Xvfb with a window manager, real mouse clicks and real keys."""

import contextlib
import mmap
import os
import shutil
import subprocess
import tempfile
import time
from pathlib import Path

from Xlib import XK, X
from Xlib.display import Display as Connection
from Xlib.error import BadWindow
from Xlib.ext import xtest

from picture import Picture, Rectangle
from waiting import TimedOut, wait_until

# Two presses of one kind within this time, in seconds, are one double press to the application.
DOUBLE_PRESS = 0.6


class Display:
    """Use as a context; nothing of it is left behind."""

    screen = Rectangle(0, 0, 1280, 960)

    def __enter__(self):
        self._folder = Path(tempfile.mkdtemp(prefix="morvella-display-"))
        self._processes = []
        self._connection = None
        self._last_key = None, 0.0
        self.last_press = None
        try:
            self.name = self._start_server()
            self._connection = Connection(self.name)
            self._start_window_manager()
            self._file = open(self._folder / "Xvfb_screen0", "rb")
            self._frame_buffer = mmap.mmap(self._file.fileno(), 0, prot=mmap.PROT_READ)
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        if self._connection:
            self._connection.close()
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
        environment = {"PATH": os.environ["PATH"], "DISPLAY": self.name, "HOME": str(self._folder)}
        with open(self._folder / "window-manager.log", "wb") as log:
            manager = subprocess.Popen(
                ["openbox", "--sm-disable"], env=environment, stdout=log, stderr=log
            )
        self._processes.append(manager)
        wait_until(self._window_is_managed, "the window manager")

    def _window_is_managed(self):
        """Whether the window manager takes care of a new window; it overlooks some as it starts."""
        window = self._map_window("Probe")
        try:
            wait_until(
                lambda: window.id in (self._root_property("_NET_CLIENT_LIST") or []), "it", 0.5
            )
            return True
        except TimedOut:
            return False
        finally:
            window.destroy()
            self._connection.sync()

    def _map_window(self, title):
        """As large as the screen."""
        root = self._connection.screen().root
        size = self.screen.width, self.screen.height
        window = root.create_window(0, 0, *size, 0, X.CopyFromParent)
        window.set_wm_name(title)
        window.map()
        self._connection.sync()
        return window

    def _root_property(self, name):
        connection = self._connection
        found = connection.screen().root.get_full_property(
            connection.get_atom(name), X.AnyPropertyType
        )
        return found.value if found else None

    def active_window(self):
        found = self._root_property("_NET_ACTIVE_WINDOW")
        return found[0] if found else None

    def uppermost_window(self):
        """The one that no other window covers."""
        found = self._root_property("_NET_CLIENT_LIST_STACKING")
        return found[-1] if found else None

    @contextlib.contextmanager
    def another_window(self):
        """Another application's window, over everything, which has the keys."""
        window = self._map_window("Another Application")
        try:
            wait_until(
                lambda: self.active_window() == self.uppermost_window() == window.id,
                "another window to be in front",
            )
            yield
        finally:
            window.destroy()
            self._connection.sync()

    def windows(self, title):
        """The visible windows whose title is exactly this."""
        return [window.id for window in self._below(self._connection.screen().root, title)]

    def _below(self, window, title):
        # Windows come and go meanwhile.
        with contextlib.suppress(BadWindow):
            for child in window.query_tree().children:
                if self._is_visible(child, title):
                    yield child
                yield from self._below(child, title)

    def _is_visible(self, window, title):
        with contextlib.suppress(BadWindow):
            visible = window.get_attributes().map_state == X.IsViewable
            return visible and self._title(window) == title
        return False

    def _title(self, window):
        found = window.get_full_property(
            self._connection.get_atom("_NET_WM_NAME"), X.AnyPropertyType
        )
        return found.value.decode() if found else None

    def area(self, window):
        """Where the content of a window lies on the screen."""
        content = self._connection.create_resource_object("window", window)
        size = content.get_geometry()
        corner = content.translate_coords(self._connection.screen().root, 0, 0)
        # The protocol counts from the other window's corner.
        return Rectangle(-corner.x, -corner.y, size.width, size.height)

    def picture(self, area):
        return Picture.of_screen(self._frame_buffer, area)

    # What a person does

    def press_mouse(self, x, y):
        self.last_press = x, y
        xtest.fake_input(self._connection, X.MotionNotify, x=x, y=y)
        xtest.fake_input(self._connection, X.ButtonPress, 1)
        self._connection.sync()

    def release_mouse(self):
        xtest.fake_input(self._connection, X.ButtonRelease, 1)
        self._connection.sync()

    def key(self, *names):
        """Presses keys, as in "Tab" or "shift+Tab".

        The same key again waits until the two are no double press: on the next page the second of
        them would rightly do nothing.
        """
        for name in names:
            self._wait_for_single_press(name)
            self._press_together(name.split("+"))
            self._last_key = name, time.monotonic()

    def _wait_for_single_press(self, name):
        last, when = self._last_key
        if name == last:
            time.sleep(max(0.0, when + DOUBLE_PRESS - time.monotonic()))

    def press_key_quickly(self, name, times):
        self._wait_for_single_press(name)
        for _ in range(times):
            self._press_together([name])
        self._last_key = name, time.monotonic()

    def hold_key(self, name, seconds):
        """Holds a key down for some time, in which the system repeats it."""
        self._wait_for_single_press(name)
        code = self._connection.keysym_to_keycode(_keysym(name))
        xtest.fake_input(self._connection, X.KeyPress, code)
        self._connection.sync()
        time.sleep(seconds)
        xtest.fake_input(self._connection, X.KeyRelease, code)
        self._connection.sync()
        self._last_key = name, time.monotonic()

    def _press_together(self, names):
        codes = [self._connection.keysym_to_keycode(_keysym(name)) for name in names]
        for code in codes:
            xtest.fake_input(self._connection, X.KeyPress, code)
        for code in reversed(codes):
            xtest.fake_input(self._connection, X.KeyRelease, code)
        self._connection.sync()


def _keysym(name):
    return XK.string_to_keysym({"shift": "Shift_L", "alt": "Alt_L"}.get(name, name))
