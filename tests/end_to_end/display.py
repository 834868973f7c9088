"""A virtual display: Xvfb with a window manager, and X events for mouse clicks and keys."""

import contextlib
import mmap
import os
import struct
import subprocess
import time
from typing import NamedTuple

from PIL import Image
from Xlib import XK, X
from Xlib.display import Display as Connection
from Xlib.ext import xtest
from Xlib.protocol.event import KeyPress, KeyRelease

import folders
from waiting import TimedOut, wait_until


class Rectangle(NamedTuple):
    """In pixels, measured from the upper left corner."""

    x: int
    y: int
    width: int
    height: int

    @property
    def box(self):
        return self.x, self.y, self.x + self.width, self.y + self.height


class Display:
    """Use as a context manager; it leaves nothing behind."""

    screen = Rectangle(0, 0, 1280, 960)

    def __enter__(self):
        with contextlib.ExitStack() as stack:
            self._folder = stack.enter_context(folders.temporary_folder("display"))
            self.name = self._start_server(stack)
            self._connection = Connection(self.name)
            stack.callback(self._connection.close)
            self._start_window_manager(stack)
            with open(self._folder / "Xvfb_screen0", "rb") as file:
                self._frame_buffer = mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ)
            self.last_press = 0.0
            self._stack = stack.pop_all()
        return self

    def __exit__(self, *failure):
        self._stack.__exit__(*failure)

    def _start(self, stack, command, **options):
        with open(self._folder / f"{command[0]}.log", "wb") as log:
            process = subprocess.Popen(command, stdout=log, stderr=log, **options)
        stack.callback(process.wait)
        stack.callback(process.terminate)

    def _start_server(self, stack):
        reading, writing = os.pipe()
        size = f"{self.screen.width}x{self.screen.height}x24"
        command = ["Xvfb", "-displayfd", str(writing), "-screen", "0", size]
        # Access control is off because some tests run the installer as another user.
        command += ["-fbdir", str(self._folder), "-nolisten", "tcp", "-ac", "-nocursor", "-noreset"]
        self._start(stack, command, pass_fds=[writing])
        os.close(writing)
        with os.fdopen(reading) as answer:
            number = answer.readline().strip()
        if not number:
            raise RuntimeError("Xvfb did not start: " + (self._folder / "Xvfb.log").read_text())
        return f":{number}"

    def _start_window_manager(self, stack):
        environment = {"PATH": os.environ["PATH"], "DISPLAY": self.name, "HOME": str(self._folder)}
        self._start(stack, ["openbox", "--sm-disable"], env=environment)
        wait_until(self._window_is_managed, "the window manager")

    def _window_is_managed(self):
        """Whether the window manager manages a new window; while it starts, it misses some."""
        with self._window("Probe") as window:
            try:
                return wait_until(
                    lambda: window.id in self._root_property("_NET_CLIENT_LIST"), "it", 0.5
                )
            except TimedOut:
                return False

    @contextlib.contextmanager
    def _window(self, title):
        """A window as large as the screen."""
        root = self._connection.screen().root
        size = self.screen.width, self.screen.height
        window = root.create_window(0, 0, *size, 0, X.CopyFromParent)
        window.set_wm_name(title)
        window.map()
        self._connection.sync()
        yield window
        window.destroy()
        self._connection.sync()

    def _root_property(self, name):
        atom = self._connection.get_atom(name)
        found = self._connection.screen().root.get_full_property(atom, X.AnyPropertyType)
        return found.value if found else []

    def active_window(self):
        return next(iter(self._root_property("_NET_ACTIVE_WINDOW")), None)

    def uppermost_window(self):
        """The window that no other window covers."""
        return next(reversed(self._root_property("_NET_CLIENT_LIST_STACKING")), None)

    @contextlib.contextmanager
    def another_window(self):
        """Another application's window, in front of everything and with the keyboard focus."""
        with self._window("Another Application") as window:
            wait_until(
                lambda: self.active_window() == self.uppermost_window() == window.id,
                "another window to be in front",
            )
            yield

    def area(self, window):
        """The rectangle of a window's content on the screen."""
        content = self._connection.create_resource_object("window", window)
        size = content.get_geometry()
        corner = content.translate_coords(self._connection.screen().root, 0, 0)
        # This is the screen's corner, relative to the window.
        return Rectangle(-corner.x, -corner.y, size.width, size.height)

    def picture(self, area=screen):
        """Cropped from the X window dump that Xvfb keeps in a file."""
        header = struct.unpack_from(">20I", self._frame_buffer)
        width, line, colors = header[4], header[12], header[19]
        first = header[0] + colors * 12 + area.y * line
        rows = self._frame_buffer[first : first + area.height * line]
        size = width, area.height
        return Image.frombytes("RGB", size, rows, "raw", "BGRX", line, 1).crop(
            (area.x, 0, area.x + area.width, area.height)
        )

    # What a user does

    def press_mouse(self, x, y):
        xtest.fake_input(self._connection, X.MotionNotify, x=x, y=y)
        xtest.fake_input(self._connection, X.ButtonPress, 1)
        self._pressed()

    def release_mouse(self):
        xtest.fake_input(self._connection, X.ButtonRelease, 1)
        self._connection.sync()

    def click(self, x, y):
        self.press_mouse(x, y)
        self.release_mouse()

    def key(self, names, seconds=0.0):
        """Presses keys together, as in "Tab" or "shift+Tab", and holds them down for `seconds`."""
        codes = [self._key_code(name) for name in names.split("+")]
        for code in codes:
            xtest.fake_input(self._connection, X.KeyPress, code)
        self._connection.sync()
        time.sleep(seconds)
        for code in reversed(codes):
            xtest.fake_input(self._connection, X.KeyRelease, code)
        self._pressed()

    def send_key(self, window, name):
        """Sends a key press without a time stamp, as programs do."""
        target = self._connection.create_resource_object("window", window)
        root = self._connection.screen().root
        fields = {"window": target, "root": root, "child": X.NONE, "same_screen": 1, "state": 0}
        places = dict.fromkeys(("root_x", "root_y", "event_x", "event_y"), 0)
        for kind in (KeyPress, KeyRelease):
            target.send_event(kind(detail=self._key_code(name), time=0, **fields, **places))
        self._connection.sync()

    def _pressed(self):
        self._connection.sync()
        self.last_press = time.monotonic()

    def _key_code(self, name):
        name = {"shift": "Shift_L", "alt": "Alt_L"}.get(name, name)
        return self._connection.keysym_to_keycode(XK.string_to_keysym(name))
