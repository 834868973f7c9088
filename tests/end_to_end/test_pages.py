"""Each page and each sheet as a whole, once."""

import re
from pathlib import Path

import pytest
from PIL import Image, ImageChops

from installer import area_of
from pages import (
    BUNDLE_CORRUPT,
    FINISH,
    INITIAL,
    INSTALLATION,
    LICENCE,
    MAKE_BACKUP,
    NO_BACKUP,
    NOT_AVAILABLE,
    OPEN_DEMO,
    PREVIOUS_INSTALLATION,
    SETTINGS,
    WAY,
    WELCOME,
)
from product import VERSION
from scenario import Scenario

IMAGES = Path(__file__).resolve().parent.parent.parent / "docs/images"
# The edge of the squares whose mean colours are compared, in pixels, and how far these may differ.
SQUARE, TOLERANCE = 8, 24

READY = "Click Next to start the installation."
WAITING = "Status: Waiting for the volume to become available..."
AVAILABLE = "User library available, click next to proceed"

PAGES = {
    INITIAL: ["The installer is checking that it is complete. This takes only a moment."],
    WELCOME: [
        "Morvella v{version}",
        "This installer adds the Morvella suite to Ableton Live. It copies:",
        "Devices",
        "into the folder “Morvella” of your Live User Library",
        "Tressimo",
        "the utility, into the folder “Morvella” in Applications",
        "Shaders",
        "into the folder shared by all users or, if it cannot be written to, into your Documents",
        "Fonts",
        "Archivo and Open Sans, into your own font folder",
        "If Morvella is installed already, the old version goes to the Trash. For the devices you"
        " are asked first, and can keep a zip backup of them.",
        "This is a beta release. Please keep copies of the Live Sets that matter to you, and tell"
        " us if something does not work.",
        "<Next> (Return, focused)",
    ],
    LICENCE: [
        "Please read the agreement. You need to accept it to install Morvella.",
        "If you do not agree, close this window.\nNothing has been installed yet.",
        "<Accept> (Return)",
    ],
    SETTINGS: [
        "The devices become part of your Live User Library, so that you find them in Live’s"
        " browser. The installer took its location from the settings of the Live application that"
        " opened it:",
        "User Library",
        "{library}",
        "The installation puts a folder “Morvella” there. If there is one already, you are asked"
        " before it is moved to the Trash, and can keep a zip backup of it.",
        "Live may stay open. Please close Live Sets that use Morvella devices.",
    ],
    INSTALLATION: [
        "Please leave this window open. It may not respond while files are unpacked.",
        "Preparing and installing…",
        "The installer puts these in place, one after the other:",
        "Fonts",
        "Archivo and Open Sans",
        "Devices",
        "the folder “Morvella” in your User Library",
        "Tressimo",
        "the utility in Applications",
        "Shaders",
        "the effects and pictures in Interactive Shader Format",
    ],
    FINISH: [
        "Morvella is in your User Library. Here is where each part goes:",
        "Devices",
        "appear in Live’s browser, under User Library > Morvella",
        "Tressimo",
        "goes to the folder “Morvella” in Applications",
        "Shaders",
        "go to the folder shared by all users or to your Documents, under Morvella > ISF",
        "Fonts",
        "go to your own font folder",
        "Drag a device from Live’s browser onto a track to start. If the folder is not there yet,"
        " give Live a moment to scan the User Library.",
    ],
}
# What follows the texts, where it differs from one moment to another.
DEMO = [f"[x] <{OPEN_DEMO}> (focused)", "<Finish> (Return)"]
NO_DEMO = [f"[ ] <{OPEN_DEMO}> (disabled, hidden)", "<Finish> (Return, focused)"]
SETTINGS_READY = [READY, "<Next> (Return)", "spinner 16 x 16 (still, hidden)"]
SETTINGS_WAIT = [WAITING, "<Next> (Return, disabled)", "spinner 16 x 16 (turning)"]
SETTINGS_AVAILABLE = [AVAILABLE, *SETTINGS_READY[1:]]
INSTALLS = ["spinner 32 x 32 (turning)"]
ASKS = ["spinner 32 x 32 (still, hidden)"]


def sidebar(title):
    """The steps as they look on this page: a mark for what is done, and where the user is."""
    titles = [page.title for page in WAY]
    current = titles.index(title) if title in titles else 0
    steps = [f"{number} {page.step}" for number, page in enumerate(WAY, 1)]
    done = [f"✓ {page.step}" for page in WAY[:current]]
    head = ["InstallerIcon", "Morvella (bold)", "Installer"]
    return [*head, *done, f"{steps[current]} (bold)", *steps[current + 1 :]]


def previous_installation(focus, spinner):
    buttons = {"Continue": "Return", "Quit": ""}
    told = [
        ", ".join(filter(None, (key, "focused" * (title == focus))))
        for title, key in buttons.items()
    ]
    shown = [f"<{title}>" + f" ({marks})" * bool(marks) for title, marks in zip(buttons, told)]
    return [
        PREVIOUS_INSTALLATION,
        f"[x] <{MAKE_BACKUP}>",
        *shown,
        "<?>",
        f"spinner 16 x 16 ({spinner})",
    ]


def expect_critical_sheet(state, message):
    assert state.sheets[-1]["message"] == message and state.sheets[-1]["critical"]
    assert state.view.lines == [message, "<Quit> (Return, focused)"]


class Pages(Scenario):
    def expect_page(self, installer, title, more=(), state=None):
        """Its texts, controls and steps, and its picture as far as it is the documents' own."""
        state = state or installer.state()
        words = {"version": VERSION, "library": installer.stage.user_library}
        texts = [text.format(**words) for text in PAGES[title]]
        assert state.title == "Morvella Installer"
        assert state.page_view.lines == [title, *texts, *more]
        assert state.steps == sidebar(title)

    def expect_picture(self, installer, name):
        """What a changed hint of a font does to it is let through, a missing mark is not."""
        state, found = installer.state(), installer.picture()
        with Image.open(IMAGES / f"{name}.png") as image:
            wanted = image.convert("RGB")
        path = str(installer.stage.user_library)
        changing = [text for text in state.page_view.texts if text.text == path]
        for part in [*changing, *state.page_view.indicators]:
            for picture in (found, wanted):
                picture.paste("white", area_of(part).box)
        squares = ImageChops.difference(found, wanted).reduce(SQUARE)
        assert max(high for _, high in squares.getextrema()) <= TOLERANCE


class TestPages(Pages):
    def test_from_the_first_to_the_last(self):
        stage = self.make_stage()
        gate = self.hold(stage)
        more = {SETTINGS: SETTINGS_READY, INSTALLATION: INSTALLS, FINISH: DEMO}
        with self.launch(stage, gate=gate) as installer:
            for page in WAY:
                if page.title == INSTALLATION:
                    gate.wait()
                else:
                    installer.wait_for(page.title)
                self.expect_page(installer, page.title, more.get(page.title, ()))
                self.expect_picture(installer, page.picture)
                if page.title == LICENCE:
                    (document,) = installer.state().page_view.documents
                    assert document.text == self.licence() and not document.editable
                gate.open() if page.title == INSTALLATION else installer.perform(page.button)
            installer.expect_end()

    def licence(self):
        """The document's text, as another program reads it."""
        return plain_text((self.bundle / "Resources/license.rtf").read_text(encoding="cp1252"))

    def test_last_page_without_a_demo_set(self):
        with self.launch(self.make_stage(demo=False)) as installer:
            installer.go_to(FINISH)
            self.expect_page(installer, FINISH, NO_DEMO)

    def test_initial_view_of_a_corrupt_bundle(self):
        self.copy_bundle(without=["morvella.zip"])
        with self.launch(self.make_stage()) as installer:
            state = installer.wait_for(BUNDLE_CORRUPT)
            self.expect_page(installer, INITIAL, state=state)
            expect_critical_sheet(state, BUNDLE_CORRUPT)

    @pytest.mark.slow
    def test_user_library_that_is_not_there_yet(self):
        """The button does nothing, by click and by Return, until it is there."""
        stage = self.make_stage(unmounted=True)
        with self.launch(stage) as installer:
            installer.go_to(SETTINGS)
            state = installer.wait_for(NOT_AVAILABLE)
            assert state.sheets[-1]["critical"]
            message, informative, button = state.view.lines
            assert [message, button] == [NOT_AVAILABLE, "<OK> (Return, focused)"]
            assert informative == (
                "If you are using external or network drive please make sure that it is"
                " connected.\nOnce it's connected the installation will proceed."
            )
            self.expect_page(installer, SETTINGS, SETTINGS_WAIT)
            installer.click("OK")
            state = installer.wait_for(SETTINGS)
            installer.wait_to_press()
            installer.display.click(*installer.place_of(state.view.control("Next")))
            installer.key("Return")
            installer.wait_for(SETTINGS)
            self.expect_page(installer, SETTINGS, SETTINGS_WAIT)
            stage.mount()
            installer.wait_for_button("Next")
            self.expect_page(installer, SETTINGS, SETTINGS_AVAILABLE)


class TestPreviousInstallation(Pages):
    def test_indicator_turns_while_the_backup_is_written(self):
        stage = self.make_stage(previous=True)
        gate = self.hold(stage)
        with self.launch(stage, gate=gate) as installer:
            installer.begin_installation()
            state = installer.wait_for(PREVIOUS_INSTALLATION)
            assert not state.sheets[-1]["critical"]
            assert state.view.lines == previous_installation("Continue", "still, hidden")
            self.expect_page(installer, INSTALLATION, ASKS)
            installer.perform("Continue")
            gate.wait()
            state = installer.state()
            assert state.view.lines == previous_installation("Continue", "turning")
            gate.open()
            installer.finish()

    def test_critical_sheet_comes_on_top_of_it(self):
        """It stays until all that its answer asks for is done."""
        self.replace_archiver("exit 7")
        stage = self.make_stage(previous=True)
        gate = self.hold(stage)
        with self.launch(stage, gate=gate) as installer:
            installer.begin_installation()
            installer.perform("Continue", at=PREVIOUS_INSTALLATION)
            gate.wait()
            state = installer.state()
            expect_critical_sheet(state, NO_BACKUP)
            below, _ = state.sheets
            assert below["shown"].lines == previous_installation(None, "still, hidden")


def plain_text(rich):
    """What a reader of such a simple document sees, by a reader that is not the platform's."""
    body = re.sub(r"\{\\fonttbl.*?\}\}", "", rich, flags=re.DOTALL)
    body = body.replace("\r", "").replace("\n", "").strip().removeprefix("{").removesuffix("}")
    body = re.sub(r"\\'([0-9a-f]{2})", lambda m: bytes.fromhex(m[1]).decode("cp1252"), body)
    body = re.sub(r"\\par\b ?", "\n", body)
    return re.sub(r"\\[a-z]+-?\d* ?", "", body)
