"""Reads what the installer's window shows, from inside its process. See inspector.mm."""

import json
import shutil
import socket
from types import SimpleNamespace

import folders


class Inspector:
    """Use as a context manager. `build` is the folder that the installer was built in."""

    def __init__(self, build, gate=None):
        self._modules, self._gate = build / "tests/end_to_end", gate

    def __enter__(self):
        self._folder_context = folders.temporary_folder("inspector")
        self._folder = self._folder_context.__enter__()
        self._folder.chmod(0o777)  # some installers run as an ordinary user
        self._place = self._folder / "socket"
        names = ["libinspector.so", "libgate.so"] if self._gate else ["libinspector.so"]
        libraries = [self._copy(name) for name in names]
        self.environment = {
            "INSPECTOR": str(self._place),
            "LD_PRELOAD": ":".join(libraries),
            "PRELOAD_IN_CHILDREN": ":".join(libraries[1:]),
            **(self._gate.environment if self._gate else {}),
        }
        return self

    def __exit__(self, *failure):
        self._folder_context.__exit__(*failure)

    def _copy(self, name):
        """LD_PRELOAD is split at spaces and colons, which the build's own path may contain."""
        module = self._modules / name
        if not module.exists():
            raise FileNotFoundError(f"{module} has not been built")
        return shutil.copy(module, self._folder)

    def ask(self, question, seconds):
        """The answer; None if the installer is not listening yet, or has ended."""
        with socket.socket(socket.AF_UNIX) as asking:
            asking.settimeout(seconds)
            try:
                asking.connect(str(self._place))
                asking.sendall(question.encode())
                asking.shutdown(socket.SHUT_WR)
                answer = b"".join(iter(lambda: asking.recv(1 << 16), b""))
            except (FileNotFoundError, ConnectionError):
                return None
        return json.loads(answer) if answer else None

    def state(self, seconds):
        answer = self.ask("", seconds)
        return State(answer) if answer else None


class View:
    """A page or a sheet, as description.mm describes it."""

    def __init__(self, described):
        parts = {kind: [SimpleNamespace(**part) for part in described[kind]] for kind in described}
        self.__dict__.update(parts)
        self.texts.sort(key=lambda text: (text.frame[1], text.frame[0]))

    def control(self, title):
        (found,) = [control for control in self.controls if control.title == title]
        return found

    @property
    def default(self):
        """The button that Return presses, if there is one that can be pressed."""
        for control in self.controls:
            if control.key == "\r" and control.enabled and not control.hidden:
                return control
        return None

    @property
    def lines(self):
        """Everything visible in it, as text."""
        return [
            *(text.text for text in self.texts),
            *map(_line_of_control, self.controls),
            *map(_line_of_indicator, self.indicators),
        ]


def _line_of_control(control):
    tick = ("[x] " if control.ticked else "[ ] ") if control.is_box else ""
    marks = {"Return": control.key == "\r", "disabled": not control.enabled}
    marks.update(hidden=control.hidden, focused=control.focused)
    marked = ", ".join(mark for mark, is_so in marks.items() if is_so)
    return f"{tick}<{control.title}>" + (f" ({marked})" if marked else "")


def _line_of_indicator(indicator):
    kind = "spinner" if indicator.spinner else "bar"
    turning = "turning" if indicator.turning else "still"
    size = " x ".join(f"{length:g}" for length in indicator.frame[2:])
    return f"{kind} {size} ({turning}{', hidden' if indicator.hidden else ''})"


class State:
    """The whole window."""

    def __init__(self, described):
        self.page_view = View(described.pop("page"))
        self.sheets = described.pop("sheets")
        for sheet in self.sheets:
            sheet["shown"] = View(sheet["shown"])
        self.__dict__.update(described)

    @property
    def page(self):
        """The title of the page."""
        texts = self.page_view.texts
        return texts[0].text if texts else None

    @property
    def place(self):
        """Where the user is: the uppermost sheet, by its message, or else the page."""
        return self.sheets[-1]["message"] if self.sheets else self.page

    @property
    def view(self):
        """The uppermost sheet or else the page, with what can be pressed there."""
        return self.sheets[-1]["shown"] if self.sheets else self.page_view
