import expectations
from descriptions import FINISH, INSTALLATION, LICENCE, SETTINGS, WELCOME
from gate import Gate
from messages import PREVIOUS_INSTALLATION
from scenario import Scenario

# Long enough for the system to repeat a key many times.
HOLDING = 1.5


class TestPresses(Scenario):
    """Press only what the user saw, and only once."""

    def expect_only_the_next_page(self, act):
        with self.launch(self.make_stage()) as installer:
            for shown, title, following in (
                (WELCOME, "Next", LICENCE),
                (LICENCE, "Accept", SETTINGS),
            ):
                installer.wait_for_page(shown)
                installer.wait_until_placed()
                act(installer, installer.state().control(title))
                installer.wait_for_page(following)
                installer.picture()
                assert installer.state().page == following

    def test_double_click(self):
        self.expect_only_the_next_page(lambda installer, button: installer.click_quickly(button, 2))

    def test_triple_click(self):
        self.expect_only_the_next_page(lambda installer, button: installer.click_quickly(button, 3))

    def test_return_key_held_down(self):
        self.expect_only_the_next_page(
            lambda installer, _: installer.display.hold_key("Return", HOLDING)
        )

    def test_return_key_pressed_quickly(self):
        self.expect_only_the_next_page(
            lambda installer, _: installer.display.press_key_quickly("Return", 5)
        )

    def test_return_key_held_down_does_not_answer_the_sheet_that_it_brings(self):
        stage = self.make_stage(previous=True)
        before = self.snapshot(stage)
        with self.launch(stage) as installer:
            self.go_to_settings(installer)
            installer.wait_for_choice(SETTINGS)
            installer.display.hold_key("Return", HOLDING)
            installer.wait_for_sheet(PREVIOUS_INSTALLATION)
            installer.picture()
            installer.press("Quit")
            self.expect_end(installer)
            self.expect_log(installer, *expectations.start_lines(stage))
        self.expect_untouched(stage, before)

    def test_presses_while_it_installs_press_nothing_on_the_last_page(self):
        stage, gate = self.make_stage(), Gate(self.folder / "gate", self.bundle)
        with self.launch(stage, environment=gate.environment) as installer:
            self.go_to_settings(installer)
            installer.wait_for_choice(SETTINGS)
            # Where "Finish" will be.
            button = installer.state().control("Next")
            installer.press("Next")
            installer.wait(lambda: gate.arrived, "the installation")
            content = installer.content
            x, y = button.area.center
            installer.display.press_mouse(content.x + x, content.y + y)
            installer.display.release_mouse()
            installer.display.key("Return", "space")
            gate.open()
            installer.wait_for_page(FINISH)
            installer.picture()
            assert installer.state().page == FINISH
            self.leave(installer)

    def test_press_on_a_sheet_counts_after_a_page_was_drawn_behind_it(self):
        stage, gate = self.make_stage(), Gate(self.folder / "gate", self.bundle)
        bundle = self.copy_bundle()
        (bundle / "Resources/Tressimo.zip").write_text("no archive\n")
        with self.launch(stage, bundle=bundle, environment=gate.environment) as installer:
            self.go_to_settings(installer)
            installer.wait_for_choice(SETTINGS)
            installer.press("Next")

            def sheet_while_it_installs():
                gate.allow(gate.arrived)
                return installer.state().sheet

            sheet = installer.wait(sheet_while_it_installs, "a sheet")
            installer.click(sheet.shown.control("Quit"))
            assert installer.state().page == INSTALLATION
            gate.open()
            self.expect_end(installer)
