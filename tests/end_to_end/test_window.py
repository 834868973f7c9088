import expectations
from messages import BUNDLE_CORRUPT
from scenario import Scenario


class ClosingTheWindow(Scenario):
    """Quits the installer at any page, and nothing happens behind it."""

    def expect_closing_quits(self, stage, installer, before):
        installer.close_window()
        self.expect_end(installer)
        expectations.expect_untouched(stage, before)
        self.assertEqual(stage.opened_documents, [])

    def close_after(self, walk, **options):
        stage = self.make_stage(**options)
        before = self.snapshot(stage)
        with self.launch(stage) as installer:
            walk(installer)
            self.expect_closing_quits(stage, installer, before)

    def test_welcome_page(self):
        self.close_after(lambda installer: installer.wait_for_first_page())

    def test_licence_page(self):
        self.close_after(self.go_to_licence)

    def test_settings_page(self):
        self.close_after(self.go_to_settings)

    def test_settings_page_while_it_waits_for_the_volume(self):
        def wait_for_volume(installer):
            sheet = self.go_to_settings(installer)
            installer.key("Return")
            installer.wait_for_stillness(unlike=sheet)

        self.close_after(wait_for_volume, unmounted=True)

    def test_last_page(self):
        stage = self.make_stage()
        with self.launch(stage) as installer:
            self.install(installer)
            self.expect_closing_quits(stage, installer, self.snapshot(stage))


class Keyboard(Scenario):
    def test_return_presses_the_button_of_every_page(self):
        stage = self.make_stage()
        with self.launch(stage) as installer:
            page = installer.wait_for_first_page()
            for _ in ("welcome", "licence"):
                installer.key("Return")
                page = installer.wait_for_stillness(unlike=page)
            installer.key("Return")
            installer.wait_for_line(expectations.HIDING)
            installer.wait_for_stillness(unlike=page)
            installer.key("Return")
            self.expect_end(installer)


class LastPage(Scenario):
    def test_demo_set_is_not_opened_when_unticked(self):
        stage = self.make_stage()
        with self.launch(stage) as installer:
            page = self.install(installer)
            installer.click(installer.interface.outlet("postInstallOpenDemoSetCheck"))
            installer.wait_for_stillness(unlike=page)
            self.leave(installer)
        self.assertEqual(stage.opened_documents, [])


class InstallationPage(Scenario):
    def test_is_drawn_before_its_work_starts(self):
        stage, bundle = self.make_stage(), self.copy_bundle()
        gate = self.folder / "gate"
        self.hold_archiver(bundle, gate)
        with self.launch(stage, bundle=bundle) as installer:
            settings = self.go_to_settings(installer)
            button = installer.interface.button("beginInstallButton:")
            installer.click(button)
            # The archiver is held back, so only a page drawn before can be seen now.
            working = installer.wait_for_stillness(unlike=settings, ignoring=[button.grown(4)])
            gate.touch()
            installer.wait_for_line(expectations.HIDING)
            installer.wait_for_stillness(unlike=working)
            self.leave(installer)

    def hold_archiver(self, bundle, gate):
        """The archiver waits until `gate` is there."""
        archiver = bundle / "Helpers/ditto"
        real = archiver.rename(archiver.with_name("held-ditto"))
        archiver.write_text(
            f'#!/bin/sh\nuntil [ -e "{gate}" ]; do sleep 0.02; done\nexec "{real}" "$@"\n'
        )
        archiver.chmod(0o755)


class Environment(Scenario):
    def test_without_a_stage_it_refuses_to_start(self):
        stage = self.make_stage()
        before = self.snapshot(stage)
        with self.launch(stage, environment={"MORVELLA_STAGE": None}) as installer:
            self.assertEqual(installer.wait_for_end(), 2)
            self.assertIn("MORVELLA_STAGE", installer.output)
        self.expect_untouched(stage, before)

    def test_trash_of_the_account_is_not_used(self):
        stage = self.make_stage(previous=True)
        account = self.folder / "account"
        account.mkdir()
        with self.launch(stage, environment={"XDG_DATA_HOME": str(account)}) as installer:
            settings = self.go_to_settings(installer)
            installer.click(installer.interface.button("beginInstallButton:"))
            installer.wait_for_stillness(unlike=settings)
            installer.key("Return")
            installer.wait_for_line(expectations.HIDING)
            installer.wait_for_stillness()
            self.leave(installer)
        self.assertEqual(list(account.iterdir()), [])
        self.assertTrue((stage.trash / "files/Morvella/My Patches").exists())

    def test_corrupt_bundle_shows_its_sheet_over_the_first_view(self):
        stage, bundle = self.make_stage(), self.copy_bundle(without=["morvella.zip"])
        with self.launch(stage, bundle=bundle) as installer:
            installer.wait_for_line(expectations.critical(BUNDLE_CORRUPT))
            first = installer.wait_for_first_page()
            installer.click_in_vain(installer.interface.button("welcomeButton:"))
            self.assertEqual(installer.wait_for_stillness(), first)
            self.quit_critical_sheet(installer, BUNDLE_CORRUPT)
