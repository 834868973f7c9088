import contextlib

from descriptions import SETTINGS, WELCOME
from messages import BUNDLE_CORRUPT, NO_USER_LIBRARY, NOT_AVAILABLE, PREVIOUS_INSTALLATION
from scenario import Scenario
from waiting import wait_until


class TestInFront(Scenario):
    """Another application's window covers the whole screen; the installer's comes before it."""

    def expect_in_front(self, installer):
        """It has the keys, and nothing lies over it."""
        window = installer.wait_until_active().window
        wait_until(lambda: self.display.uppermost_window() == window, "the window in front")

    @contextlib.contextmanager
    def press_and_cover(self, installer, title):
        """The other window comes while the button is held down."""
        installer.hold_down(title)
        with self.display.another_window():
            installer.wait_for_state(lambda state: not state.key, "the window to lose the keys")
            self.display.release_mouse()
            yield

    def test_first_page(self):
        with self.display.another_window(), self.launch(self.make_stage()) as installer:
            installer.wait_for_page(WELCOME)
            self.expect_in_front(installer)

    def test_critical_sheet_on_the_initial_view(self):
        bundle = self.copy_bundle(without=["license.rtf"])
        stage = self.make_stage()
        with self.display.another_window(), self.launch(stage, bundle=bundle) as installer:
            installer.wait_for_sheet(BUNDLE_CORRUPT)
            self.expect_in_front(installer)

    def test_critical_sheet(self):
        stage = self.make_stage()
        stage.library_cfg.unlink()
        with self.launch(stage) as installer:
            self.go_to_licence(installer)
            with self.press_and_cover(installer, "Accept"):
                installer.wait_for_sheet(NO_USER_LIBRARY)
                self.expect_in_front(installer)

    def test_sheet_about_the_volume(self):
        with self.launch(self.make_stage(unmounted=True)) as installer:
            self.go_to_licence(installer)
            with self.press_and_cover(installer, "Accept"):
                installer.wait_for_sheet(NOT_AVAILABLE)
                self.expect_in_front(installer)

    def test_sheet_about_the_previous_installation(self):
        with self.launch(self.make_stage(previous=True)) as installer:
            self.go_to_settings(installer)
            installer.wait_for_choice(SETTINGS)
            with self.press_and_cover(installer, "Next"):
                installer.wait_for_sheet(PREVIOUS_INSTALLATION)
                self.expect_in_front(installer)

    def test_page_alone_stays_where_it_is(self):
        """What tells the sheets' coming forward from that of anything that happens."""
        with self.launch(self.make_stage()) as installer:
            self.go_to_licence(installer)
            with self.press_and_cover(installer, "Accept"):
                installer.wait_for_page(SETTINGS)
                installer.wait_for_choice(SETTINGS)
                assert self.display.uppermost_window() != installer.state().window
