"""Compares each page and each sheet as a whole, once."""

from pathlib import Path

import pytest
from PIL import Image, ImageChops

import pages
from expectations import expect_opened, expect_untouched
from installer import area_of
from log_lines import critical_line, start_lines
from product import VERSION
from scenario import Scenario

IMAGES = Path(__file__).resolve().parent.parent.parent / "docs/images"
# Pictures are compared by the mean colours of squares with this edge, in pixels. Text that moves by
# half a pixel changes a mean by 14; a missing "1", the thinnest mark, by 19.
SQUARE, TOLERANCE = 8, 16

READY = "Click Next to start the installation."
WAITING = "Status: Waiting for the volume to become available..."
AVAILABLE = "User library available, click next to proceed"

# The last lines of each page; the lines before them never change.
INSTALLS = ["spinner 32 x 32 (turning)"]
ASKS = ["spinner 32 x 32 (still, hidden)"]
SETTINGS_READY = [READY, "<Next> (Return)", "spinner 16 x 16 (still, hidden)"]
SETTINGS_WAIT = [WAITING, "<Next> (Return, disabled)", "spinner 16 x 16 (turning)"]
SETTINGS_AVAILABLE = [AVAILABLE, *SETTINGS_READY[1:]]
DEMO = [f"[x] <{pages.OPEN_DEMO}> (focused)", "<Finish> (Return)"]
NO_DEMO = [f"[ ] <{pages.OPEN_DEMO}> (disabled, hidden)", "<Finish> (Return, focused)"]
LAST_LINES = {
    pages.WELCOME: ["<Next> (Return, focused)"],
    pages.LICENCE: ["<Accept> (Return)"],
    pages.SETTINGS: SETTINGS_READY,
    pages.INSTALLATION: INSTALLS,
    pages.FINISH: DEMO,
}


def previous_installation(spinner, focus=" (Return, focused)"):
    return [
        pages.PREVIOUS_INSTALLATION,
        f"[x] <{pages.MAKE_BACKUP}>",
        f"<Continue>{focus}",
        "<Quit>",
        "<?>",
        f"spinner 16 x 16 ({spinner})",
    ]


def expect_critical_sheet(state, message):
    assert state.sheets[-1]["message"] == message and state.sheets[-1]["critical"]
    assert state.view.lines == [message, "<Quit> (Return, focused)"]


class Pages(Scenario):
    def expect_page(self, installer, title, last=None, state=None):
        """Compares the lines that vary; the pictures show the rest."""
        state = state or installer.state()
        last = last or LAST_LINES.get(title, [])
        lines = state.page_view.lines
        assert (state.title, lines[0]) == ("Morvella Installer", title)
        assert lines[len(lines) - len(last) :] == last
        changing = {
            pages.WELCOME: [f"Morvella v{VERSION}"],
            pages.SETTINGS: [str(installer.stage.user_library)],
        }
        assert set(changing.get(title, [])) <= set(lines)

    def expect_picture(self, installer, name):
        """Tolerates different font hinting, but not a missing mark."""
        state, found = installer.state(), installer.picture()
        with Image.open(IMAGES / f"{name}.png") as image:
            wanted = image.convert("RGB")
        path = str(installer.stage.user_library)
        changing = [text for text in state.page_view.texts if text.text == path]
        for part in [*changing, *state.page_view.indicators]:
            for picture in (found, wanted):
                picture.paste("white", area_of(part).box)
        squares = ImageChops.difference(found.reduce(SQUARE), wanted.reduce(SQUARE))
        assert max(high for _, high in squares.getextrema()) <= TOLERANCE


class TestPages(Pages):
    def test_from_the_first_to_the_last(self):
        stage = self.make_stage()
        with self.launch(stage, gate=self.hold(stage)) as installer:
            for page in pages.PAGES:
                if page.title == pages.INSTALLATION:
                    installer.gate.wait()
                else:
                    installer.wait_for(page.title)
                self.expect_page(installer, page.title)
                self.expect_picture(installer, page.picture)
                if page.button:
                    installer.perform(page.button)
                else:
                    installer.gate.open()
            installer.expect_end()

    def test_tab_leads_to_the_first_control(self):
        """The settings page's only button is still disabled when the page appears."""
        with self.launch(self.make_stage()) as installer:
            installer.go_to(pages.SETTINGS)
            installer.wait_until_active()
            self.display.key("Tab")
            installer.wait_for_state(lambda state: state.view.control("Next").focused, "the focus")

    @pytest.mark.parametrize(("demo", "slash"), [(False, "/"), (True, "")])
    def test_last_page_without_a_demo_set(self, demo, slash):
        """The demo Live Set's path is appended to the kit's, which must end in a slash."""
        stage = self.make_stage(demo=demo)
        arguments = ["-liveapp", stage.live_executable, "-app", f"{stage.kit}{slash}"]
        with self.launch(stage, arguments) as installer:
            installer.go_to(pages.FINISH)
            self.expect_page(installer, pages.FINISH, NO_DEMO)
            installer.finish()
        expect_opened(stage, [])

    @pytest.mark.parametrize(
        ("missing", "named"),
        [
            (["license.rtf", "morvella.zip"], None),
            (["Archivo-Medium.ttf"], "Archivo-Medium.ttf"),
            (["OpenSans-Regular.ttf", "morvella.zip"], "OpenSans-Regular.ttf"),
            (["morvella.zip"], "morvella.zip"),
        ],
    )
    def test_initial_view_of_a_corrupt_bundle(self, missing, named):
        """The log names the first missing resource, unless that is the licence."""
        self.copy_bundle(without=missing)
        with self.launch(self.make_stage()) as installer:
            state = installer.wait_for(pages.BUNDLE_CORRUPT)
            self.expect_page(installer, pages.INITIAL, state=state)
            expect_critical_sheet(state, pages.BUNDLE_CORRUPT)
            lines = [f"resource not found:{named}"] if named else []
            assert installer.log == [*lines, critical_line(pages.BUNDLE_CORRUPT)]
            installer.perform("Quit")
            installer.expect_end()

    @pytest.mark.slow
    def test_user_library_that_is_not_available_yet(self):
        """Neither a click on "Next" nor Return does anything until the User Library is there."""
        stage = self.make_stage(unmounted=True)
        with self.launch(stage) as installer:
            installer.go_to(pages.SETTINGS)
            state = installer.wait_for(pages.NOT_AVAILABLE)
            assert state.sheets[-1]["critical"]
            message, informative, button = state.view.lines
            assert [message, button] == [pages.NOT_AVAILABLE, "<OK> (Return, focused)"]
            assert informative == (
                "If you are using external or network drive please make sure that it is"
                " connected.\nOnce it's connected the installation will proceed."
            )
            self.expect_page(installer, pages.SETTINGS, SETTINGS_WAIT)
            installer.click("OK")
            state = installer.wait_for(pages.SETTINGS)
            installer.wait_to_press()
            installer.display.click(*installer.place_of(state.view.control("Next")))
            installer.key("Return")
            installer.wait_for(pages.SETTINGS)
            self.expect_page(installer, pages.SETTINGS, SETTINGS_WAIT)
            stage.mount()
            installer.wait_for_button("Next")
            self.expect_page(installer, pages.SETTINGS, SETTINGS_AVAILABLE)


class TestPreviousInstallation(Pages):
    def test_indicator_turns_while_the_backup_is_written(self):
        stage = self.make_stage(previous=True)
        with self.launch(stage, gate=self.hold(stage)) as installer:
            installer.begin_installation()
            state = installer.wait_for(pages.PREVIOUS_INSTALLATION)
            assert not state.sheets[-1]["critical"]
            assert state.view.lines == previous_installation("still, hidden")
            self.expect_page(installer, pages.INSTALLATION, ASKS)
            installer.perform("Continue")
            installer.gate.wait()
            state = installer.state()
            assert state.view.lines == previous_installation("turning")
            installer.gate.open()
            installer.finish()

    def test_critical_sheet_covers_the_question(self):
        """The question stays until the work that its answer started is done."""
        self.replace_archiver("exit 7")
        stage = self.make_stage(previous=True)
        with self.launch(stage, gate=self.hold(stage)) as installer:
            installer.begin_installation()
            installer.perform("Continue", at=pages.PREVIOUS_INSTALLATION)
            installer.gate.wait()
            state = installer.state()
            expect_critical_sheet(state, pages.NO_BACKUP)
            below, _ = state.sheets
            assert below["shown"].lines == previous_installation("still, hidden", " (Return)")


class TestException(Pages):
    def test_during_the_work_of_a_page_leads_to_a_critical_sheet(self):
        stage = self.make_stage()
        before = self.snapshot(stage)
        with self.launch(stage) as installer:
            installer.go_to(pages.SETTINGS)
            installer.make_indicators_raise()
            installer.perform("Next")
            expect_critical_sheet(installer.wait_for(pages.UNKNOWN_STATE), pages.UNKNOWN_STATE)
            assert installer.log == [
                *start_lines(stage),
                "NSGenericException: raised for a test",
                "unknown state reached.",
                critical_line(pages.UNKNOWN_STATE),
            ]
            installer.perform("Quit")
            installer.expect_end()
        expect_untouched(stage, before)
