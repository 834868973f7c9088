"""Places of the installation that are taken, missing or unusable."""

import re

import pytest

import pages
import snapshot
from expectations import expect_backup, expect_files, installed
from log_lines import (
    OLD_SUITE_HANDLED,
    critical_line,
    failed_line,
    not_trashed_line,
    refused_line,
)
from folders import ordinary_user
from scenario import Scenario, expect_nothing_lost


class TestDestination(Scenario):
    def test_link_to_a_folder_elsewhere(self):
        """The folder's files are backed up, and the link alone goes to the Trash."""
        stage = self.make_stage()
        elsewhere = stage.documents / "Elsewhere"
        elsewhere.mkdir()
        (elsewhere / "Own.txt").write_text("a file of the user's own\n")
        stage.destination.symlink_to(elsewhere)
        before = self.snapshot(stage)
        self.run(stage)
        expect_nothing_lost(stage, before)
        expect_backup(stage, snapshot.of_folder(elsewhere))
        assert installed(self.bundle, stage).items() <= self.snapshot(stage).items()


class TestFonts(Scenario):
    def test_missing_folder_does_not_stop_the_installation(self):
        stage = self.make_stage()
        stage.fonts.rmdir()
        log = [
            re.compile(r"Copy error:(?!\(null\)).+"),
            re.compile(r"Can't find font in the users' fonts library:(?!\(null\)).+"),
            "Couldn't install fonts.",
        ]
        self.run(stage, log=log, adds=installed(self.bundle, stage, with_fonts=False))


class TestApplications(Scenario):
    def test_folder_that_cannot_be_written_to(self):
        stage = self.make_stage()
        user = ordinary_user(stage.root)
        stage.applications.chmod(0o555)
        failed = r"Creating Morvella folder in /Applications failed with error: (?!\(null\)).+"
        log = [re.compile(failed), refused_line("Tressimo.zip"), failed_line("Tressimo.zip")]
        criticals = [pages.NO_APPLICATIONS, pages.NO_UTILITIES]
        added = installed(self.bundle, stage, utilities_to=None)
        self.run(stage, criticals=criticals, log=log, user=user, adds=added)


class TestSharedData(Scenario):
    """Something already exists where the shaders go."""

    @pytest.mark.parametrize("name", ["Morvella", "Morvella/Own.fs"])
    def test_existing_file_or_folder_is_left_alone(self, name):
        stage = self.make_stage()
        (stage.shared / name).parent.mkdir(exist_ok=True)
        (stage.shared / name).write_text("a file of the user's own\n")
        self.run(stage, adds=installed(self.bundle, stage, shaders_to=None))

    def test_dangling_link_sends_the_shaders_to_documents(self):
        stage = self.make_stage()
        stage.shared_data.symlink_to(stage.documents / "Not There")
        folder = r"Couldn't create shared folder\(.*Shared/Morvella/?\), error:(?!\(null\)).+"
        # This is still the error from the folder that could not be created.
        documents = r"Couldn't access documents folder, error:(?!\(null\)).+"
        added = installed(self.bundle, stage, shaders_to=stage.documents / "Morvella")
        self.run(stage, log=[re.compile(folder), re.compile(documents)], adds=added)


class TestTrash(Scenario):
    def test_cannot_be_used(self):
        """Two critical sheets are requested, and everything is installed anyway."""
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

    def test_is_on_the_stage_whatever_xdg_data_home_says(self):
        stage, account = self.make_stage(previous=True), self.folder / "account"
        account.mkdir()
        self.run(stage, environment={"XDG_DATA_HOME": str(account)})
        assert list(account.iterdir()) == []
        assert (stage.trash / "files/Morvella/My Patches").exists()
