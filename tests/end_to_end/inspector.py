"""What the installer's window shows, read from inside the process. See inspector.mm."""

import json
import shutil
import socket
import tempfile
from pathlib import Path

from picture import Rectangle


class Inspector:
    """Use as a context around the run."""

    def __init__(self, bundle, for_everybody=False):
        self._library = installed_module(bundle, "libinspector.so")
        self._for_everybody = for_everybody

    def __enter__(self):
        self._folder = Path(tempfile.mkdtemp(prefix="morvella-inspector-"))
        self._place = self._folder / "socket"
        if self._for_everybody:
            self._folder.chmod(0o777)
            self._library = shutil.copy(self._library, self._folder)
        return self

    def __exit__(self, *_):
        shutil.rmtree(self._folder)

    def preload(self, environment):
        others = environment.get("LD_PRELOAD")
        return {
            **environment,
            "LD_PRELOAD": f"{self._library}:{others}" if others else str(self._library),
            "INSPECTOR": str(self._place),
        }

    def state(self, seconds):
        """None if there is nobody to answer: not yet, or no more."""
        with socket.socket(socket.AF_UNIX) as asking:
            asking.settimeout(seconds)
            try:
                asking.connect(str(self._place))
                pieces = list(iter(lambda: asking.recv(1 << 16), b""))
            except (FileNotFoundError, ConnectionError):
                return None
        answer = json.loads(b"".join(pieces) or b"{}")
        return State(answer) if answer else None


def installed_module(bundle, name):
    """A module of the tests, from the build that the application comes from."""
    module = bundle.parent / "tests/end_to_end" / name
    if not module.exists():
        raise FileNotFoundError(f"{module} must be built")
    return module


class Part:
    """Something on the screen. Its attributes are those that inspector.mm tells."""

    def __init__(self, described):
        self._described = described

    def __getattr__(self, name):
        try:
            return self._described[name]
        except KeyError:
            raise AttributeError(name) from None

    @property
    def area(self):
        """Counted from the upper left corner of the window's content."""
        return Rectangle(*map(round, self.frame))


class View(Part):
    """A page, a sheet's box or its accessory."""

    @property
    def texts(self):
        """What there is to read, line by line from the top, each from the left."""
        places = [(piece["frame"][1], piece["frame"][0], piece["text"]) for piece in self._texts]
        return [text for _, _, text in sorted(places)]

    @property
    def _texts(self):
        return self._described["texts"]

    @property
    def controls(self):
        return [Part(control) for control in self._described["controls"]]

    @property
    def indicators(self):
        return [Part(indicator) for indicator in self._described["indicators"]]

    @property
    def documents(self):
        return [Part(document) for document in self._described["documents"]]

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


class Sheet(Part):
    @property
    def shown(self):
        return View(self._described["shown"])

    @property
    def buttons(self):
        return [Part(button) for button in self._described["buttons"]]

    @property
    def box(self):
        described = self._described["box"]
        return Part(described) if described else None

    @property
    def accessory(self):
        described = self._described["accessory"]
        return View(described) if described else None


class State(View):
    """The whole window. What is in `texts`, `controls` and so on is on the page."""

    @property
    def page(self):
        """Its title."""
        texts = self.texts
        return texts[0] if texts else None

    @property
    def sheets(self):
        return [Sheet(sheet) for sheet in self._described["sheets"]]

    @property
    def sheet(self):
        """The uppermost."""
        sheets = self.sheets
        return sheets[-1] if sheets else None

    @property
    def place(self):
        """Where a person is: the uppermost sheet, by its message, or else the page."""
        return self.sheet.message if self.sheet else self.page

    @property
    def pressable(self):
        """The button that Return presses, in the uppermost sheet or else on the page."""
        if self.sheet:
            return self.sheet.shown.default
        return self.default
