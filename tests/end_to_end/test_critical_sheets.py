from expectations import (
    HIDING,
    critical,
    expect_files,
    font_lines,
    installed,
    refused_line,
    shader_lines,
    start_lines,
    suite_lines,
    utility_lines,
)
from messages import BUNDLE_CORRUPT, NOT_INSTALLED, NOT_VERIFIED, NO_LIVE_SET, NO_USER_LIBRARY
from scenario import Scenario


class TestCriticalSheets(Scenario):
    def test_bundle_without_a_font_is_corrupt(self):
        stage, bundle = self.make_stage(), self.copy_bundle(without=["Archivo-Medium.ttf"])
        before = self.snapshot(stage)
        with self.launch(stage, bundle=bundle) as installer:
            self.quit_critical_sheet(installer, BUNDLE_CORRUPT)
            self.expect_log(
                installer, "resource not found:Archivo-Medium.ttf", critical(BUNDLE_CORRUPT)
            )
        self.expect_untouched(stage, before)

    def test_only_the_first_missing_resource_is_named(self):
        bundle = self.copy_bundle(without=["OpenSans-Regular.ttf", "morvella.zip"])
        with self.launch(self.make_stage(), bundle=bundle) as installer:
            self.quit_critical_sheet(installer, BUNDLE_CORRUPT)
            self.expect_log(
                installer, "resource not found:OpenSans-Regular.ttf", critical(BUNDLE_CORRUPT)
            )

    def test_bundle_without_a_licence_is_corrupt_without_a_word(self):
        bundle = self.copy_bundle(without=["license.rtf"])
        with self.launch(self.make_stage(), bundle=bundle) as installer:
            self.quit_critical_sheet(installer, BUNDLE_CORRUPT)
            self.expect_log(installer, critical(BUNDLE_CORRUPT))

    def test_without_arguments_there_is_no_live_set(self):
        stage = self.make_stage()
        before = self.snapshot(stage)
        with self.launch(stage, []) as installer:
            self.quit_critical_sheet(installer, NO_LIVE_SET)
            self.expect_log(installer, critical(NO_LIVE_SET))
        self.expect_untouched(stage, before)

    def test_sheet_keeps_clicks_and_keys_from_the_page_behind_it(self):
        with self.launch(self.make_stage(), []) as installer:
            installer.wait_for_line(critical(NO_LIVE_SET))
            installer.wait_for_sheet(NO_LIVE_SET)
            behind = installer.state().control("Next")
            installer.click(behind)
            # The sheet is between them, so what is answered next shows that the click did nothing.
            installer.wait_for_sheet(NO_LIVE_SET)
            self.quit_critical_sheet(installer, NO_LIVE_SET)

    def test_library_cfg_that_is_missing_gives_no_user_library(self):
        stage = self.make_stage()
        stage.library_cfg.unlink()
        before = self.snapshot(stage)
        with self.launch(stage) as installer:
            self.go_to_settings(installer)
            self.quit_critical_sheet(installer, NO_USER_LIBRARY)
            self.expect_log(
                installer,
                *start_lines(stage),
                "couldn't get usrlib info, status:1",
                critical(NO_USER_LIBRARY),
            )
        self.expect_untouched(stage, before)

    def test_suite_without_its_application_fails_to_install(self):
        stage, bundle = self.make_stage(), self.copy_bundle()
        self.remove_from_archive(bundle / "Resources/morvella.zip", "Morvella/Morvella.app")
        before = self.snapshot(stage)
        with self.launch(stage, bundle=bundle) as installer:
            self.begin_installation(installer)
            self.quit_critical_sheet(installer, NOT_INSTALLED)
            self.expect_log(
                installer,
                *start_lines(stage),
                *font_lines(bundle, stage),
                *suite_lines(bundle),
                *utility_lines(bundle, stage),
                *shader_lines(bundle),
                HIDING,
                "aborting, couldn't hide the app file.",
                critical(NOT_INSTALLED),
            )
        expect_files(stage, {**before, **installed(bundle, stage)})
        assert stage.opened_documents == []

    def test_unwritable_user_library_fails_to_install(self):
        stage, bundle = self.make_stage(), self.copy_bundle()
        user = self.ordinary_user(stage)
        stage.user_library.chmod(0o555)
        before = self.snapshot(stage)
        with self.launch(stage, bundle=bundle, user=user) as installer:
            self.begin_installation(installer)
            self.quit_critical_sheet(installer, NOT_INSTALLED)
            self.expect_log(
                installer,
                *start_lines(stage),
                *font_lines(bundle, stage),
                refused_line("morvella.zip"),
                *utility_lines(bundle, stage),
                *shader_lines(bundle),
                HIDING,
                "aborting, couldn't hide the app file.",
                critical(NOT_INSTALLED),
            )
        expect_files(stage, {**before, **installed(bundle, stage, suite_to=None)})

    def test_suite_without_a_required_device_fails_to_verify(self):
        stage, bundle = self.make_stage(), self.copy_bundle()
        self.remove_from_archive(
            bundle / "Resources/morvella.zip", "Morvella/Sources/Vellicor.amxd"
        )
        before = self.snapshot(stage)
        with self.launch(stage, bundle=bundle) as installer:
            self.begin_installation(installer)
            self.quit_critical_sheet(installer, NOT_VERIFIED)
            self.expect_log(
                installer,
                *start_lines(stage),
                *font_lines(bundle, stage),
                *suite_lines(bundle),
                *utility_lines(bundle, stage),
                *shader_lines(bundle),
                HIDING,
                critical(NOT_VERIFIED),
            )
        expect_files(stage, {**before, **installed(bundle, stage)})
        assert stage.opened_documents == []
