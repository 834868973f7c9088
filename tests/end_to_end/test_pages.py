"""Each page and each sheet as a whole, once."""

import re

import pytest

from descriptions import (
    CRITICAL,
    FINISH,
    INITIAL,
    INSTALLATION,
    LICENCE,
    SETTINGS,
    WARNING,
    WELCOME,
    box,
    button,
    critical_sheet,
    indicator,
    page,
    sheet,
    whole_page,
    whole_sheet,
)
from gate import Gate
from messages import (
    BUNDLE_CORRUPT,
    CONNECT_DRIVE,
    MAKE_BACKUP,
    NO_BACKUP,
    NOT_AVAILABLE,
    PREVIOUS_INSTALLATION,
)
from processes import children
from scenario import Scenario

OPEN_DEMO = "Open the demo Live Set in Live now"
READY = "Click Next to start the installation."
WAITING = "Status: Waiting for the volume to become available..."
AVAILABLE = "User library available, click next to proceed"

INITIAL_TEXTS = [
    INITIAL,
    "The installer is checking that it is complete. This takes only a moment.",
]
WELCOME_TEXTS = [
    WELCOME,
    "Morvella v2.2",
    "This installer adds the Morvella suite to Ableton Live. It copies:",
    "Devices",
    "into the folder “Morvella” of your Live User Library",
    "Tressimo",
    "the utility, into the folder “Morvella” in Applications",
    "Shaders",
    "into the folder shared by all users or, if it cannot be written to, into your Documents",
    "Fonts",
    "Archivo and Open Sans, into your own font folder",
    "If Morvella is installed already, the old version goes to the Trash. For the devices you are"
    " asked first, and can keep a zip backup of them.",
    "This is a beta release. Please keep copies of the Live Sets that matter to you, and tell us if"
    " something does not work.",
]
LICENCE_TEXTS = [
    LICENCE,
    "Please read the agreement. You need to accept it to install Morvella.",
    "If you do not agree, close this window.\nNothing has been installed yet.",
]
INSTALLATION_TEXTS = [
    INSTALLATION,
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
]
FINISH_TEXTS = [
    FINISH,
    "Morvella is in your User Library. Here is where each part goes:",
    "Devices",
    "appear in Live’s browser, under User Library > Morvella",
    "Tressimo",
    "goes to the folder “Morvella” in Applications",
    "Shaders",
    "go to the folder shared by all users or to your Documents, under Morvella > ISF",
    "Fonts",
    "go to your own font folder",
    "Drag a device from Live’s browser onto a track to start. If the folder is not there yet, give"
    " Live a moment to scan the User Library.",
]


def settings_texts(stage, status):
    return [
        SETTINGS,
        "The devices become part of your Live User Library, so that you find them in Live’s"
        " browser. The installer took its location from the settings of the Live application that"
        " opened it:",
        "User Library",
        str(stage.user_library),
        "The installation puts a folder “Morvella” there. If there is one already, you are asked"
        " before it is moved to the Trash, and can keep a zip backup of it.",
        "Live may stay open. Please close Live Sets that use Morvella devices.",
        status,
    ]


def settings(stage, status, *, ready, turns=False, sheets=()):
    # The button is disabled when the page appears, so the keys stay with the window.
    controls = [button("Next", enabled=ready)]
    texts, indicators = settings_texts(stage, status), [indicator(16, turns)]
    return page(3, texts, controls, indicators=indicators, sheets=sheets)


def installation(turns, sheets=()):
    return page(4, INSTALLATION_TEXTS, [], indicators=[indicator(32, turns)], sheets=sheets)


def finish(*, demo=True):
    """The box is hidden where there is no demo Live Set to open."""
    demo_box = box(OPEN_DEMO, int(demo), enabled=demo, hidden=not demo, focused=demo)
    return page(5, FINISH_TEXTS, [demo_box, button("Finish", focused=not demo)])


def previous_installation(turns=False, answered=False):
    return sheet(
        WARNING,
        PREVIOUS_INSTALLATION,
        [button("Continue", focused=not answered or turns), button("Quit", key="")],
        tick=box(MAKE_BACKUP, 1),
        help=True,
        accessory=indicator(16, turns),
    )


class TestPages(Scenario):
    def test_from_the_first_to_the_last(self):
        stage, gate = self.make_stage(), Gate(self.folder / "gate", self.bundle)
        with self.launch(stage, environment=gate.environment) as installer:
            state = installer.wait_for_page(WELCOME)
            assert whole_page(state) == page(1, WELCOME_TEXTS, [button("Next", focused=True)])
            state = self.go_to_licence(installer)
            assert whole_page(state) == page(2, LICENCE_TEXTS, [button("Accept")])
            (document,) = state.documents
            assert document.text == self.licence() and not document.editable
            installer.press("Accept")
            state = installer.wait_for_choice(SETTINGS)
            assert whole_page(state) == settings(stage, READY, ready=True)
            installer.press("Next")
            installer.wait(lambda: gate.arrived, "the installation")
            assert whole_page(installer.state()) == installation(turns=True)
            gate.open()
            assert whole_page(installer.wait_for_page(FINISH)) == finish()

    def licence(self):
        """The document's text, as another program reads it."""
        source = (self.bundle / "Resources/license.rtf").read_text(encoding="cp1252")
        return plain_text(source)

    def test_last_page_without_a_demo_set(self):
        with self.launch(self.make_stage(demo=False)) as installer:
            assert whole_page(self.install(installer)) == finish(demo=False)

    def test_initial_view_of_a_corrupt_bundle(self):
        bundle = self.copy_bundle(without=["morvella.zip"])
        with self.launch(self.make_stage(), bundle=bundle) as installer:
            installer.wait_for_sheet(BUNDLE_CORRUPT)
            expected = page(1, INITIAL_TEXTS, [], sheets=[BUNDLE_CORRUPT])
            assert whole_page(installer.state()) == expected
            self.quit_critical_sheet(installer, BUNDLE_CORRUPT)

    @pytest.mark.slow
    def test_user_library_that_is_not_there_yet(self):
        """The button does nothing, by click and by Return, until it is there."""
        stage = self.make_stage(unmounted=True)
        waiting = {"ready": False, "turns": True}
        with self.launch(stage) as installer:
            self.go_to_settings(installer)
            shown = installer.wait_for_sheet(NOT_AVAILABLE)
            ok = [button("OK", focused=True)]
            expected = sheet(CRITICAL, NOT_AVAILABLE, ok, informative=CONNECT_DRIVE)
            assert whole_sheet(shown) == expected
            expected = settings(stage, WAITING, **waiting, sheets=[NOT_AVAILABLE])
            assert whole_page(installer.state()) == expected
            installer.press("OK")
            installer.wait_for_page(SETTINGS)
            installer.press("Next")
            installer.key("Return")
            assert whole_page(installer.wait_for_page(SETTINGS)) == settings(
                stage, WAITING, **waiting
            )
            stage.mount()
            state = installer.wait_for_choice(SETTINGS)
            assert whole_page(state) == settings(stage, AVAILABLE, ready=True)


class TestPreviousInstallation(Scenario):
    def test_indicator_turns_while_the_backup_is_written(self):
        stage, gate = self.make_stage(previous=True), Gate(self.folder / "gate", self.bundle)
        with self.launch(stage, environment=gate.environment) as installer:
            self.begin_installation(installer)
            shown = installer.wait_for_sheet(PREVIOUS_INSTALLATION)
            assert whole_sheet(shown) == previous_installation()
            expected = installation(turns=False, sheets=[PREVIOUS_INSTALLATION])
            assert whole_page(installer.state()) == expected
            installer.press("Continue")
            installer.wait(lambda: children(installer.process.pid), "the archiver")
            shown = installer.wait_for_sheet(PREVIOUS_INSTALLATION)
            assert whole_sheet(shown) == previous_installation(turns=True, answered=True)
            gate.open()
            installer.finish()

    def test_critical_sheet_comes_on_top_of_it(self):
        """It stays until all that its answer asks for is done."""
        self.bundle = self.copy_bundle()
        archiver = self.bundle / "Helpers/ditto"
        archiver.write_text("#!/bin/sh\nexit 7\n")
        stage, gate = self.make_stage(previous=True), Gate(self.folder / "gate", self.built)
        with self.launch(stage, environment=gate.environment) as installer:
            self.begin_installation(installer)
            installer.wait_for_sheet(PREVIOUS_INSTALLATION)
            installer.press("Continue")
            installer.wait(lambda: gate.arrived, "the way to the Trash")
            state = installer.state()
            below, above = state.sheets
            assert whole_sheet(below) == previous_installation(answered=True)
            assert whole_sheet(above) == critical_sheet(NO_BACKUP)


def plain_text(rich):
    """What a reader of such a simple document sees, by a reader that is not the platform's."""

    body = re.sub(r"\{\\fonttbl.*?\}\}", "", rich, flags=re.DOTALL)
    body = body.replace("\r", "").replace("\n", "").strip().removeprefix("{").removesuffix("}")
    body = re.sub(r"\\'([0-9a-f]{2})", lambda m: bytes.fromhex(m[1]).decode("cp1252"), body)
    body = re.sub(r"\\par\b ?", "\n", body)
    return re.sub(r"\\[a-z]+-?\d* ?", "", body)
