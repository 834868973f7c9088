import contextlib

import pytest

import pages
from expectations import expect_untouched
from gate import Gate
from scenario import Scenario
from waiting import wait_until

CLOSE = "alt+F4"


class TestClosingTheWindow(Scenario):
    """Quits the installer on any page; during the installation, once it has ended."""

    def expect_closing_quits(self, installer):
        before = self.snapshot(installer.stage)
        installer.wait_until_active()
        self.display.key(CLOSE)
        installer.expect_end()
        expect_untouched(installer.stage, before)
        assert installer.stage.opened_documents == []

    @pytest.mark.parametrize(
        "title", [page.title for page in pages.PAGES if page.title != pages.INSTALLATION]
    )
    def test_on_a_page(self, title):
        with self.launch(self.make_stage()) as installer:
            installer.go_to(title)
            self.expect_closing_quits(installer)

    def test_on_the_initial_view(self):
        self.copy_bundle(without=["license.rtf"])
        with self.launch(self.make_stage()) as installer:
            assert installer.wait_for(pages.BUNDLE_CORRUPT).page == pages.INITIAL
            self.expect_closing_quits(installer)

    def test_on_the_settings_page_while_it_waits_for_the_volume(self):
        with self.launch(self.make_stage(unmounted=True)) as installer:
            installer.go_to(pages.SETTINGS)
            installer.perform("OK", at=pages.NOT_AVAILABLE)
            installer.wait_for(pages.SETTINGS)
            self.expect_closing_quits(installer)

    def test_under_the_sheet_about_the_previous_installation(self):
        with self.launch(self.make_stage(previous=True)) as installer:
            installer.begin_installation()
            installer.wait_for(pages.PREVIOUS_INSTALLATION)
            self.expect_closing_quits(installer)

    def test_on_the_installation_page(self):
        """The window closes once the installation has ended; everything installed stays."""
        stage = self.make_stage()
        with self.launch(stage, gate=self.hold(stage)) as installer:
            installer.begin_installation()
            installer.gate.wait()
            self.display.key(CLOSE)
            installer.gate.open()
            installer.expect_end()
        assert stage.opened_documents == []
        assert (stage.destination / ".Morvella.app").exists()


class TestInFront(Scenario):
    """Another application's window covers the whole screen; the installer's comes to the front."""

    def expect_in_front(self, installer):
        """Its window has the keyboard focus, and no window covers it."""
        window = installer.wait_until_active().window
        wait_until(lambda: self.display.uppermost_window() == window, "the window to be in front")

    @contextlib.contextmanager
    def press_and_cover(self, installer, title):
        """Another window covers the screen while the button is held down."""
        installer.hold_down(title)
        with self.display.another_window():
            installer.wait_for_state(lambda state: not state.key, "the window to lose the focus")
            self.display.release_mouse()
            yield

    def test_first_page(self):
        with self.display.another_window(), self.launch(self.make_stage()) as installer:
            installer.wait_for(pages.WELCOME)
            self.expect_in_front(installer)

    def test_critical_sheet_on_the_initial_view(self):
        self.copy_bundle(without=["license.rtf"])
        with self.display.another_window(), self.launch(self.make_stage()) as installer:
            installer.wait_for(pages.BUNDLE_CORRUPT)
            self.expect_in_front(installer)

    @pytest.mark.parametrize(
        ("message", "page", "button"),
        [
            (pages.NO_USER_LIBRARY, pages.LICENCE, "Accept"),
            (pages.NOT_AVAILABLE, pages.LICENCE, "Accept"),
            (pages.PREVIOUS_INSTALLATION, pages.SETTINGS, "Next"),
        ],
    )
    def test_sheet(self, message, page, button):
        unmounted = message == pages.NOT_AVAILABLE
        stage = self.make_stage(unmounted=unmounted, previous=not unmounted)
        if message == pages.NO_USER_LIBRARY:
            stage.library_cfg.unlink()
        with self.launch(stage) as installer:
            installer.go_to(page)
            with self.press_and_cover(installer, button):
                installer.wait_for(message)
                self.expect_in_front(installer)

    def test_page_alone_does_not_come_to_the_front(self):
        """A control for the tests above: only sheets bring the window to the front."""
        with self.launch(self.make_stage()) as installer:
            installer.go_to(pages.LICENCE)
            with self.press_and_cover(installer, "Accept"):
                state = installer.wait_for(pages.SETTINGS)
                assert self.display.uppermost_window() != state.window


class TestFailures(Scenario):
    def test_without_a_stage_it_refuses_to_start(self):
        stage = self.make_stage()
        before = self.snapshot(stage)
        with self.launch(stage, environment={"MORVELLA_STAGE": None}) as installer:
            assert installer.wait_for_end() == 2
            assert "MORVELLA_STAGE" in installer.output
        expect_untouched(stage, before)

    def test_gate_names_a_change_held_for_too_long(self):
        """The gate of these tests must not hold the installer forever."""
        stage = self.make_stage()
        gate = Gate(self.folder / "gate", stage, seconds=0.1)
        with self.launch(stage, gate=gate) as installer:
            installer.begin_installation()
            with pytest.raises(AssertionError) as failure:
                installer.wait_for(pages.FINISH)
        assert f"the gate held {stage.fonts}/" in str(failure.value)
