import re

import disturbed
import snapshot
from expectations import (
    FONTS,
    HIDING,
    critical,
    expect_files,
    failed_line,
    font_lines,
    installation_lines,
    installed,
    refused_line,
    shader_lines,
    start_lines,
    suite_lines,
    utility_lines,
)
from messages import NO_APPLICATIONS, NO_USER_FILES, NO_UTILITIES, NOT_INSTALLED
from scenario import Scenario


class TestBadArchives(Scenario):
    def install_and_quit(self, bundle, *lines):
        stage = self.make_stage()
        with self.launch(stage, bundle=bundle) as installer:
            self.begin_installation(installer)
            self.quit_any_sheet(installer)
            expected = [*start_lines(stage), *font_lines(bundle, stage)]
            for line in lines:
                expected += line(stage) if callable(line) else [line]
            self.expect_log(installer, *expected)
        return stage

    def test_missing_shaders(self):
        bundle = self.copy_bundle(without=["ISF.zip"])
        stage = self.install_and_quit(
            bundle,
            *suite_lines(bundle),
            lambda stage: utility_lines(bundle, stage),
            "Installing ISF.zip...",
            failed_line("ISF.zip"),
            critical(NO_USER_FILES),
            HIDING,
        )
        assert stage.shared_data.is_dir()
        assert list(stage.shared_data.iterdir()) == []

    def test_damaged_utilities(self):
        bundle = self.copy_bundle()
        archive = bundle / "Resources/Tressimo.zip"
        archive.write_bytes(archive.read_bytes()[:100])
        stage = self.install_and_quit(
            bundle,
            *suite_lines(bundle),
            lambda stage: [f"Installing Tressimo.zip to {stage.utilities}..."],
            refused_line("Tressimo.zip"),
            failed_line("Tressimo.zip"),
            critical(NO_UTILITIES),
            *shader_lines(bundle),
            HIDING,
        )
        assert (stage.shared_data / "ISF").is_dir()

    def test_damaged_suite(self):
        bundle = self.copy_bundle()
        (bundle / "Resources/morvella.zip").write_bytes(b"not an archive at all")
        stage = self.install_and_quit(
            bundle,
            refused_line("morvella.zip"),
            lambda stage: utility_lines(bundle, stage),
            *shader_lines(bundle),
            HIDING,
            "aborting, couldn't hide the app file.",
            critical(NOT_INSTALLED),
        )
        assert not stage.destination.exists()


class TestFoldersThatCannotBeUsed(Scenario):
    def test_missing_font_folder_stops_nothing(self):
        stage = self.make_stage()
        stage.fonts.rmdir()
        before = self.snapshot(stage)
        with self.launch(stage) as installer:
            self.install(installer)
            self.leave(installer)
            self.expect_log(
                installer,
                *start_lines(stage),
                *disturbed.fonts_not_copied(present=())(self.bundle, stage),
                *installation_lines(self.bundle, stage)[len(FONTS) :],
            )
        expect_files(stage, {**before, **installed(self.bundle, stage, fonts=())})

    def test_unwritable_applications_folder(self):
        stage, bundle = self.make_stage(), self.copy_bundle()
        user = self.ordinary_user(stage)
        stage.applications.chmod(0o555)
        before = self.snapshot(stage)
        with self.launch(stage, bundle=bundle, user=user) as installer:
            self.begin_installation(installer)
            self.quit_any_sheet(installer)
            self.expect_log(
                installer,
                *start_lines(stage),
                *font_lines(bundle, stage),
                *suite_lines(bundle),
                re.compile(
                    r"Creating Morvella folder in /Applications failed with error: (?!\(null\)).+"
                ),
                critical(NO_APPLICATIONS),
                f"Installing Tressimo.zip to {stage.utilities}...",
                refused_line("Tressimo.zip"),
                failed_line("Tressimo.zip"),
                critical(NO_UTILITIES),
                *shader_lines(bundle),
                HIDING,
            )
        expect_files(stage, {**before, **installed(bundle, stage, utilities_to=None)})

    def test_unwritable_shared_folder_falls_back_to_documents(self):
        stage, bundle = self.make_stage(), self.copy_bundle()
        old = stage.documents / "Morvella/ISF/Standard"
        old.mkdir(parents=True)
        (old / "Old.fs").write_text("an old shader\n")
        kept = stage.documents / "ISF"
        kept.mkdir()
        (kept / "Own.fs").write_text("a shader of the user's own\n")
        user = self.ordinary_user(stage)
        stage.shared.chmod(0o555)
        before = self.snapshot(stage)
        with self.launch(stage, bundle=bundle, user=user) as installer:
            self.install(installer)
            self.leave(installer)
            self.expect_log(
                installer,
                *start_lines(stage),
                *font_lines(bundle, stage),
                *suite_lines(bundle),
                *utility_lines(bundle, stage),
                re.compile(
                    r"Couldn't create shared folder\(.*Shared/Morvella/?\), error:(?!\(null\)).+"
                ),
                "Shared folder not found, falling back to user folder.",
                # The error of the folder that could not be created still stands.
                re.compile(r"Couldn't access documents folder, error:(?!\(null\)).+"),
                f"Deleting {old}",
                *shader_lines(bundle),
                HIDING,
            )
        place = old.relative_to(stage.root)
        trashed = {"Standard": snapshot.below(before, place)}
        expected = snapshot.without(before, place)
        added = installed(bundle, stage, shaders_to=stage.documents / "Morvella")
        expect_files(stage, {**expected, **added}, trashed=trashed)
