import expectations
from descriptions import FINISH, INITIAL, LICENCE, SETTINGS, WELCOME
from gate import Gate
from messages import BUNDLE_CORRUPT, NOT_AVAILABLE, PREVIOUS_INSTALLATION
from scenario import Scenario

OPEN_DEMO = "Open the demo Live Set in Live now"


class TestClosingTheWindow(Scenario):
    """Quits the installer at any page, and nothing happens behind it."""

    def expect_closing_quits(self, stage, installer, before):
        installer.close_window()
        self.expect_end(installer)
        expectations.expect_untouched(stage, before)
        assert stage.opened_documents == []

    def close_after(self, walk, **options):
        stage = self.make_stage(**options)
        before = self.snapshot(stage)
        with self.launch(stage) as installer:
            walk(installer)
            self.expect_closing_quits(stage, installer, before)

    def test_initial_view(self):
        stage, bundle = self.make_stage(), self.copy_bundle(without=["license.rtf"])
        with self.launch(stage, bundle=bundle) as installer:
            installer.wait_for_sheet(BUNDLE_CORRUPT)
            assert installer.state().page == INITIAL
            self.expect_closing_quits(stage, installer, self.snapshot(stage))

    def test_welcome_page(self):
        self.close_after(lambda installer: installer.wait_for_page(WELCOME))

    def test_licence_page(self):
        self.close_after(self.go_to_licence)

    def test_settings_page(self):
        self.close_after(self.go_to_settings)

    def test_settings_page_while_it_waits_for_the_volume(self):
        def wait_for_volume(installer):
            self.go_to_settings(installer)
            installer.wait_for_sheet(NOT_AVAILABLE)
            installer.press("OK")
            installer.wait_for_page(SETTINGS)

        self.close_after(wait_for_volume, unmounted=True)

    def test_sheet_about_the_previous_installation(self):
        def wait_for_sheet(installer):
            self.begin_installation(installer)
            installer.wait_for_sheet(PREVIOUS_INSTALLATION)

        self.close_after(wait_for_sheet, previous=True)

    def test_installation_page(self):
        """The window answers when the installation has ended; what is installed stays."""
        stage, gate = self.make_stage(), Gate(self.folder / "gate", self.bundle)
        with self.launch(stage, environment=gate.environment) as installer:
            self.begin_installation(installer)
            installer.wait(lambda: gate.arrived, "the installation")
            installer.close_window()
            gate.open()
            self.expect_end(installer)
        assert stage.opened_documents == []
        assert (stage.destination / ".Morvella.app").exists()

    def test_last_page(self):
        stage = self.make_stage()
        with self.launch(stage) as installer:
            self.install(installer)
            self.expect_closing_quits(stage, installer, self.snapshot(stage))


class TestKeyboard(Scenario):
    def test_return_presses_the_button_of_every_page(self):
        stage = self.make_stage()
        with self.launch(stage) as installer:
            for page in (WELCOME, LICENCE, SETTINGS, FINISH):
                installer.wait_for_choice(page)
                installer.key("Return")
            self.expect_end(installer)
        expectations.expect_opened(stage, [str(stage.demo_set)])


class TestLastPage(Scenario):
    def test_demo_set_is_not_opened_when_unticked(self):
        stage = self.make_stage()
        with self.launch(stage) as installer:
            self.install(installer)
            installer.press(OPEN_DEMO)
            installer.wait_for_tick(OPEN_DEMO, False)
            self.leave(installer)
        assert stage.opened_documents == []


class TestEnvironment(Scenario):
    def test_without_a_stage_it_refuses_to_start(self):
        stage = self.make_stage()
        before = self.snapshot(stage)
        with self.launch(stage, environment={"MORVELLA_STAGE": None}) as installer:
            assert installer.wait_for_end() == 2
            assert "MORVELLA_STAGE" in installer.output
        self.expect_untouched(stage, before)

    def test_trash_of_the_account_is_not_used(self):
        stage = self.make_stage(previous=True)
        account = self.folder / "account"
        account.mkdir()
        with self.launch(stage, environment={"XDG_DATA_HOME": str(account)}) as installer:
            self.begin_installation(installer)
            installer.wait_for_sheet(PREVIOUS_INSTALLATION)
            installer.press("Continue")
            installer.finish()
        assert list(account.iterdir()) == []
        assert (stage.trash / "files/Morvella/My Patches").exists()
