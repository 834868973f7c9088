"""What stands in the places of the installation, or cannot be used of them."""

import re

import pytest

import pages
import snapshot
from expectations import expect_backup, expect_files, fonts, installed
from log_lines import (
    OLD_SUITE_HANDLED,
    critical_line,
    failed_line,
    font_lines,
    font_not_copied_lines,
    no_folder_line,
    not_trashed_line,
    refused_line,
    shaders_to_documents_lines,
)
from folders import ordinary_user
from scenario import Scenario, expect_nothing_lost


class TestDestination(Scenario):
    """Something else than a previous installation stands where the suite will be."""

    @pytest.fixture
    def stage(self):
        stage = self.make_stage()
        self.elsewhere = stage.documents / "Elsewhere"
        self.elsewhere.mkdir()
        (self.elsewhere / "Own.txt").write_text("a file of the user's own\n")
        return stage

    def expect_replaced(self, stage, **options):
        """Runs to the end; what stood in the place must be in the Trash afterwards."""
        before = self.snapshot(stage)
        self.run(stage, **options)
        expect_nothing_lost(stage, before)
        assert installed(self.bundle, stage).items() <= self.snapshot(stage).items()

    def test_file(self, stage):
        stage.destination.write_text("a file of the user's own\n")
        self.expect_replaced(stage)

    def test_link_to_a_folder_elsewhere(self, stage):
        stage.destination.symlink_to(self.elsewhere)
        self.expect_replaced(stage)
        expect_backup(stage, snapshot.of_folder(self.elsewhere))

    def test_dangling_link(self, stage):
        stage.destination.symlink_to(stage.documents / "Not There")
        self.expect_replaced(stage, criticals=[pages.NO_BACKUP], log=["Making backup failed"])

    def test_user_library_that_cannot_be_written_to(self, stage):
        user = ordinary_user(stage.root)
        stage.user_library.chmod(0o555)
        before = self.snapshot(stage)
        log = [refused_line("morvella.zip")]
        self.run(stage, criticals=[pages.NOT_INSTALLED], log=log, user=user)
        expect_files(stage, {**before, **installed(self.bundle, stage, suite_to=None)})


class TestFonts(Scenario):
    def test_fonts_with_other_contents_stay(self):
        stage, present = self.make_stage(), fonts(self.bundle)
        for font in present:
            (stage.fonts / font).write_text("another font of that name\n")
        before = self.snapshot(stage)
        self.run(stage, log=font_lines(self.bundle, stage, present))
        expect_files(stage, {**installed(self.bundle, stage), **before})

    def test_missing_folder_stops_nothing(self):
        stage = self.make_stage()
        stage.fonts.rmdir()
        before = self.snapshot(stage)
        self.run(stage, log=font_not_copied_lines())
        expect_files(stage, {**before, **installed(self.bundle, stage, with_fonts=False)})


class TestApplications(Scenario):
    def test_folder_that_cannot_be_written_to(self):
        stage = self.make_stage()
        user = ordinary_user(stage.root)
        stage.applications.chmod(0o555)
        before = self.snapshot(stage)
        failed = r"Creating Morvella folder in /Applications failed with error: (?!\(null\)).+"
        log = [re.compile(failed), refused_line("Tressimo.zip"), failed_line("Tressimo.zip")]
        self.run(stage, criticals=[pages.NO_APPLICATIONS, pages.NO_UTILITIES], log=log, user=user)
        expect_files(stage, {**before, **installed(self.bundle, stage, utilities_to=None)})


class TestSharedData(Scenario):
    """What stands in the way of the shaders."""

    def expect_shaders(self, stage, to, **options):
        before = self.snapshot(stage)
        self.run(stage, **options)
        expect_files(stage, {**before, **installed(self.bundle, stage, shaders_to=to)})

    @pytest.mark.parametrize("name", ["Morvella", "Morvella/Own.fs"])
    def test_existing_file_or_folder_is_left_alone(self, name):
        stage = self.make_stage()
        (stage.shared / name).parent.mkdir(exist_ok=True)
        (stage.shared / name).write_text("a file of the user's own\n")
        self.expect_shaders(stage, to=None)

    def test_dangling_link_is_no_folder_to_write_to(self):
        stage = self.make_stage()
        stage.shared_data.symlink_to(stage.documents / "Not There")
        to = stage.documents / "Morvella"
        self.expect_shaders(stage, to, log=shaders_to_documents_lines())

    def test_old_shaders_in_the_documents_are_replaced(self):
        stage = self.make_stage()
        old = stage.documents / "Morvella/ISF/Standard"
        old.mkdir(parents=True)
        (old / "Old.fs").write_text("an old shader\n")
        (stage.documents / "ISF").mkdir()
        (stage.documents / "ISF/Own.fs").write_text("a shader of the user's own\n")
        user = ordinary_user(stage.root)
        stage.shared.chmod(0o555)
        before, place = self.snapshot(stage), old.relative_to(stage.root)
        log = [*shaders_to_documents_lines(), f"Deleting {old}"]
        self.run(stage, log=log, user=user, elsewhere=True)
        added = installed(self.bundle, stage, shaders_to=stage.documents / "Morvella")
        expected = {**snapshot.without(before, place), **added}
        expect_files(stage, expected, trashed={"Standard": snapshot.below(before, place)})

    @pytest.mark.parametrize("has_documents", [True, False])
    def test_neither_shared_folder_nor_documents(self, has_documents):
        stage = self.make_stage()
        if not has_documents:
            stage.documents.rmdir()
        user = ordinary_user(stage.root)
        for folder in (stage.shared, stage.documents if has_documents else stage.home):
            folder.chmod(0o555)
        criticals = (
            [pages.NO_USER_FILES] if has_documents else [pages.NO_SHARED_DATA, pages.NO_USER_FILES]
        )
        log = [*shaders_to_documents_lines(), no_folder_line("Documents")]
        log += [refused_line("ISF.zip"), failed_line("ISF.zip")]
        self.expect_shaders(stage, None, criticals=criticals, log=log, user=user)


class TestPreviousInstallation(Scenario):
    def test_second_run_replaces_the_first(self):
        stage = self.make_stage()
        self.run(stage)
        before = self.snapshot(stage)
        self.run(stage, log=font_lines(self.bundle, stage, present=fonts(self.bundle)))
        expect_backup(stage, snapshot.below(before, stage.destination.relative_to(stage.root)))
        trashed = sorted(path.name for path in (stage.trash / "files").iterdir())
        assert trashed == ["Morvella", "Morvella.2"]
        after = self.snapshot(stage)
        for place in (stage.destination, stage.utilities, stage.shared_data, stage.fonts):
            place = place.relative_to(stage.root)
            assert snapshot.below(after, place) == snapshot.below(before, place)

    def test_trash_that_cannot_be_used(self):
        """Two sheets come in a row, and the installation behind them is complete."""
        stage = self.make_stage()
        stage.destination.mkdir()
        (stage.destination / "Own.adv").write_text("a patch of the user's own\n")
        stage.trash.parent.mkdir(parents=True)
        stage.trash.write_text("a file in place of the folder\n")
        before, old = self.snapshot(stage), snapshot.of_folder(stage.destination)
        log = [
            not_trashed_line(stage.destination),
            "couldn't move to trash.",
            critical_line(pages.NOT_TRASHED),
            critical_line(pages.STILL_THERE),
            OLD_SUITE_HANDLED,
        ]
        self.run(stage, criticals=[pages.NOT_TRASHED, pages.STILL_THERE], log=log)
        added = {**installed(self.bundle, stage), **expect_backup(stage, old)}
        expect_files(stage, {**before, **added})

    def test_trash_of_the_account_is_not_used(self):
        stage, account = self.make_stage(previous=True), self.folder / "account"
        account.mkdir()
        self.run(stage, environment={"XDG_DATA_HOME": str(account)})
        assert list(account.iterdir()) == []
        assert (stage.trash / "files/Morvella/My Patches").exists()
