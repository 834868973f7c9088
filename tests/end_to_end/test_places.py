import re
from pathlib import Path

import disturbed
import snapshot
from expectations import (
    FONTS,
    HANDLED,
    HIDING,
    critical,
    expect_files,
    failed_line,
    font_lines,
    installation_lines,
    installed,
    refused_line,
    start_lines,
    suite_lines,
    utility_lines,
)
from fault import Fault
from messages import NO_SHARED_DATA, NO_USER_FILES


class TestDestination(Fault):
    """Something else than a previous installation stands where the suite will be."""

    def make_stage_with_folder_elsewhere(self):
        stage = self.make_stage()
        elsewhere = stage.documents / "Elsewhere"
        elsewhere.mkdir()
        (elsewhere / "Own.txt").write_text("a file of the user's own\n")
        return stage, elsewhere

    def replace(self, stage, *previous):
        """Runs to the end; what stood in the place must be in the Trash afterwards."""
        before = self.snapshot(stage)
        self.expect_run(
            stage, *start_lines(stage), *previous, *installation_lines(self.bundle, stage)
        )
        self.expect_nothing_lost(stage, before)
        after = self.snapshot(stage)
        assert installed(self.bundle, stage).items() <= after.items()

    def test_file(self):
        stage = self.make_stage()
        stage.destination.write_text("a file of the user's own\n")
        self.replace(stage, *disturbed.not_backed_up(self.bundle, stage))

    def test_link_to_a_folder_elsewhere(self):
        stage, elsewhere = self.make_stage_with_folder_elsewhere()
        stage.destination.symlink_to(elsewhere)
        self.replace(stage, HANDLED)
        (backup,) = stage.user_library.glob("MorvellaBackup-*.zip")
        packed = snapshot.placed(snapshot.of_folder(elsewhere), Path("Morvella"))
        assert snapshot.of_archive(backup) == packed

    def test_dangling_link(self):
        stage = self.make_stage()
        stage.destination.symlink_to(stage.documents / "Not There")
        self.replace(stage, *disturbed.not_readable(self.bundle, stage))


class TestFonts(Fault):
    def test_fonts_with_other_contents_stay(self):
        stage = self.make_stage()
        for font in FONTS:
            (stage.fonts / font).write_text("another font of that name\n")
        before = self.snapshot(stage)
        self.expect_run(
            stage,
            *start_lines(stage),
            *font_lines(self.bundle, stage, present=FONTS),
            *installation_lines(self.bundle, stage)[len(FONTS) :],
        )
        expect_files(stage, {**installed(self.bundle, stage), **before})


class TestSharedData(Fault):
    """What stands in the way of the shaders."""

    def expect_shaders(self, stage, *shaders, to, **options):
        before = self.snapshot(stage)
        self.expect_run(
            stage,
            *start_lines(stage),
            *font_lines(self.bundle, stage),
            *suite_lines(self.bundle),
            *utility_lines(self.bundle, stage),
            *shaders,
            HIDING,
            **options,
        )
        expect_files(stage, {**before, **installed(self.bundle, stage, shaders_to=to)})

    def test_existing_folder_is_left_alone(self):
        stage = self.make_stage()
        stage.shared_data.mkdir()
        (stage.shared_data / "Own.fs").write_text("a shader of the user's own\n")
        self.expect_shaders(stage, to=None)

    def test_existing_file_is_left_alone(self):
        stage = self.make_stage()
        stage.shared_data.write_text("a file of the user's own\n")
        self.expect_shaders(stage, to=None)

    def test_dangling_link_is_no_folder_to_write_to(self):
        stage = self.make_stage()
        stage.shared_data.symlink_to(stage.documents / "Not There")
        shaders = disturbed.shaders_to_documents(self.bundle, stage)
        self.expect_shaders(stage, *shaders, to=stage.documents / "Morvella")

    def test_neither_shared_folder_nor_documents_can_be_written_to(self):
        self.bundle, stage = self.copy_bundle(), self.make_stage()
        user = self.ordinary_user(stage)
        stage.shared.chmod(0o555)
        stage.documents.chmod(0o555)
        self.expect_shaders(stage, *self.refused(), to=None, user=user)

    def test_neither_shared_folder_nor_documents_are_there(self):
        self.bundle, stage = self.copy_bundle(), self.make_stage()
        stage.documents.rmdir()
        user = self.ordinary_user(stage)
        stage.shared.chmod(0o555)
        stage.home.chmod(0o555)
        unreachable = [
            "Couldn't acces neither Shared nor User Home folder.",
            critical(NO_SHARED_DATA),
        ]
        self.expect_shaders(stage, *self.refused(*unreachable), to=None, user=user)

    def refused(self, *unreachable):
        creating = r"Couldn't create shared folder\(.*%s/Morvella/?\), error:(?!\(null\)).+"
        return [
            re.compile(creating % "Shared"),
            "Shared folder not found, falling back to user folder.",
            re.compile(r"Couldn't access documents folder, error:(?!\(null\)).+"),
            re.compile(creating % "Documents"),
            *unreachable,
            "Installing ISF.zip...",
            refused_line("ISF.zip"),
            failed_line("ISF.zip"),
            critical(NO_USER_FILES),
        ]
