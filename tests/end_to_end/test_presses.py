"""The real mouse and keyboard: a press counts once, and only for what the user has seen."""

import time

import pytest

import pages
from expectations import expect_opened, expect_untouched
from scenario import Scenario

# In seconds: long enough for a key to repeat many times, the time between two presses of one
# series, and the time between two series.
HOLDING = 1.5
QUICK = 0.05
DELIBERATE = 0.7
MANY = 40
BUTTONS = {page.title: page.button for page in pages.PAGES}


class TestQuickPresses(Scenario):
    """Forty presses in a row lead to the next page and no further."""

    @pytest.mark.parametrize("keys", [(), ("Return",), ("space",), ("Return", "space")])
    @pytest.mark.parametrize(
        ("first", "following"),
        [
            (pages.WELCOME, pages.LICENCE),
            (pages.LICENCE, pages.SETTINGS),
            (pages.SETTINGS, pages.PREVIOUS_INSTALLATION),
        ],
    )
    def test_lead_to_the_next_page_only(self, first, following, keys):
        stage = self.make_stage(previous=True)
        before = self.snapshot(stage)
        with self.launch(stage) as installer:
            installer.go_to(first)
            if "space" in keys:
                self.focus(installer, BUTTONS[first])
            place = installer.place_of(installer.wait_to_press().view.control(BUTTONS[first]))
            for number in range(MANY):
                if keys:
                    self.display.key(keys[number % len(keys)])
                else:
                    self.display.click(*place)
                time.sleep(QUICK)
            installer.wait_for(following)
        expect_untouched(stage, before)

    def focus(self, installer, title):
        """Focuses the button, because Space presses the focused control."""

        def is_focused():
            focused = installer.state().view.control(title).focused
            return focused or self.display.key("Tab")

        installer.wait(is_focused, f"{title!r} to have the focus", interval=0.2)

    @pytest.mark.parametrize("name", ["Return", "space"])
    def test_key_held_down(self, name):
        with self.launch(self.make_stage()) as installer:
            installer.wait_for(pages.WELCOME)
            installer.wait_to_press()
            self.display.key(name, HOLDING)
            installer.wait_for(pages.LICENCE)

    def test_box_toggles_as_often_as_it_is_clicked(self):
        """With both boxes unticked, the installer makes no backup and opens nothing."""
        stage = self.make_stage(previous=True)
        with self.launch(stage) as installer:
            installer.begin_installation()
            for title, at in (
                (pages.MAKE_BACKUP, pages.PREVIOUS_INSTALLATION),
                (pages.OPEN_DEMO, pages.FINISH),
            ):
                installer.wait_for(at)
                place = installer.place_of(installer.wait_to_press().view.control(title))
                for ticked in (False, True, False, True, False):
                    self.display.click(*place)
                    installer.wait_for_state(
                        lambda state: state.view.control(title).ticked == ticked,
                        f"{title} {ticked}",
                    )
                installer.click(
                    "Continue" if at == pages.PREVIOUS_INSTALLATION else BUTTONS[pages.FINISH]
                )
            installer.expect_end()
        assert list(stage.user_library.glob("*Backup*")) == []
        assert (stage.trash / "files/Morvella/My Patches").is_dir()
        expect_opened(stage, [])


class TestDeliberatePresses(Scenario):
    @pytest.mark.parametrize("name", ["Return", None])
    def test_each_counts(self, name):
        """Return presses the button of every page, because it is the default button."""
        stage = self.make_stage()
        with self.launch(stage) as installer:
            for page in pages.PAGES:
                if page.button:
                    installer.wait_for(page.title)
                    place = installer.place_of(installer.state().view.control(page.button))
                    time.sleep(DELIBERATE)
                    self.display.key(name) if name else self.display.click(*place)
            installer.expect_end()
        expect_opened(stage, [stage.demo_set])

    def test_key_without_a_time_stamp_counts(self):
        with self.launch(self.make_stage()) as installer:
            steps = [(pages.WELCOME, pages.LICENCE), (pages.LICENCE, pages.SETTINGS)]
            for page, following in steps:
                installer.wait_for(page)
                state = installer.wait_to_press()
                self.display.send_key(state.window, "Return")
                installer.wait_for(following)

    def test_quit_in_the_question_changes_nothing(self):
        stage = self.make_stage(previous=True)
        before = self.snapshot(stage)
        with self.launch(stage) as installer:
            installer.begin_installation()
            installer.wait_for(pages.PREVIOUS_INSTALLATION)
            installer.click("Quit")
            installer.expect_end()
        expect_untouched(stage, before)


class TestPressesTooEarly(Scenario):
    def test_do_nothing_while_it_installs_and_as_the_last_page_appears(self):
        stage = self.make_stage()
        with self.launch(stage, gate=self.hold(stage)) as installer:
            installer.go_to(pages.SETTINGS)
            # Where "Finish" will be.
            place = installer.place_of(installer.state().view.control(BUTTONS[pages.SETTINGS]))
            installer.perform(BUTTONS[pages.SETTINGS])
            installer.gate.wait()
            self.display.click(*place)
            self.display.key("Return")
            installer.gate.open()
            installer.wait_for_state(lambda state: state.page == pages.FINISH, pages.FINISH)
            self.display.key("Return")
            self.display.click(*place)
            time.sleep(DELIBERATE)
            installer.wait_for(pages.FINISH)
            installer.click(BUTTONS[pages.FINISH])
            installer.expect_end()

    def test_do_nothing_on_a_page_behind_a_sheet(self):
        """Keys still go to the sheet after the page behind it has changed."""
        self.replace_archiver('case "$1" in -c*) exit 7 ;; *) real "$@" ;; esac')
        stage = self.make_stage(previous=True)
        with self.launch(stage) as installer:
            installer.begin_installation()
            installer.click("Continue")
            state = installer.wait_for_state(
                lambda state: state.page == pages.FINISH and not state.working, "the last page"
            )
            assert state.place == pages.NO_BACKUP
            assert state.view.control("Quit").focused
            (behind,) = [control for control in state.page_view.controls if control.key == "\r"]
            installer.wait_to_press()
            self.display.click(*installer.place_of(behind))
            installer.wait_for(pages.NO_BACKUP)
            installer.key("Return")
            installer.expect_end()
        expect_opened(stage, [])
