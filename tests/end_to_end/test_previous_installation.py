from pathlib import Path

import snapshot
from expectations import (
    FONTS,
    HANDLED,
    HIDING,
    critical,
    expect_files,
    file_url,
    font_lines,
    installed,
    start_lines,
    suite_lines,
    utility_lines,
)
from messages import MAKE_BACKUP, NOT_TRASHED, PREVIOUS_INSTALLATION, STILL_THERE
from scenario import Scenario


class TestPreviousInstallation(Scenario):
    def ask(self, installer):
        """Walks to the sheet that asks for the old folder's deletion."""
        self.begin_installation(installer)
        return installer.wait_for_sheet(PREVIOUS_INSTALLATION)

    def install_without_backup(self, installer):
        self.ask(installer)
        installer.press(MAKE_BACKUP)
        installer.wait_for_tick(MAKE_BACKUP, False)
        installer.press("Continue")

    def test_quit_changes_nothing(self):
        stage = self.make_stage(previous=True)
        before = self.snapshot(stage)
        with self.launch(stage) as installer:
            self.ask(installer)
            installer.press("Quit")
            self.expect_end(installer)
            self.expect_log(installer, *start_lines(stage))
        self.expect_untouched(stage, before)

    def test_without_the_backup_the_old_folder_only_goes_to_the_trash(self):
        stage = self.make_stage(previous=True)
        before = self.snapshot(stage)
        old = stage.destination.relative_to(stage.root)
        with self.launch(stage) as installer:
            self.install_without_backup(installer)
            installer.finish()
        utilities = stage.utilities.relative_to(stage.root)
        trashed = {
            "Morvella": snapshot.below(before, old),
            "Morvella.2": snapshot.below(before, utilities),
        }
        kept = snapshot.without(snapshot.without(before, old), utilities)
        added = installed(self.bundle, stage, shaders_to=None)
        expect_files(stage, {**added, **kept}, trashed=trashed)

    def test_second_run_replaces_the_first(self):
        stage = self.make_stage()
        with self.launch(stage) as installer:
            self.install(installer)
            self.leave(installer)
        before = self.snapshot(stage)
        with self.launch(stage) as installer:
            self.ask(installer)
            installer.press("Continue")
            installer.finish()
            self.expect_log(
                installer,
                *start_lines(stage),
                HANDLED,
                *font_lines(self.bundle, stage, present=FONTS),
                *suite_lines(self.bundle),
                *utility_lines(self.bundle, stage, replaced=True),
                HIDING,
            )
        assert len(list(stage.user_library.glob("MorvellaBackup-*.zip"))) == 1
        trashed = sorted(path.name for path in (stage.trash / "files").iterdir())
        assert trashed == ["Morvella", "Morvella.2"]
        after = self.snapshot(stage)
        for place in (stage.destination, stage.utilities, stage.shared_data, stage.fonts):
            place = place.relative_to(stage.root)
            assert snapshot.below(after, place) == snapshot.below(before, place)

    def test_plain_file_in_its_place_counts_as_one(self):
        stage = self.make_stage()
        stage.destination.write_text("a file of the user's own\n")
        with self.launch(stage) as installer:
            self.install_without_backup(installer)
            installer.finish()
        trashed = stage.trash / "files/Morvella"
        assert trashed.read_text() == "a file of the user's own\n"
        assert (stage.destination / "Sources/Vellicor.amxd").exists()

    def test_trash_that_cannot_be_used_ends_in_a_critical_sheet(self):
        stage = self.make_stage(previous=True)
        stage.trash.parent.mkdir(parents=True)
        stage.trash.write_text("not a folder\n")
        before = snapshot.below(self.snapshot(stage), stage.destination.relative_to(stage.root))
        with self.launch(stage) as installer:
            self.install_without_backup(installer)
            self.quit_any_sheet(installer)
            lines = installer.log
        expected = [
            *start_lines(stage),
            f"failed to move to trash:{file_url(stage.destination)}/",
            "couldn't move to trash.",
            critical(NOT_TRASHED),
            critical(STILL_THERE),
            HANDLED,
        ]
        assert lines[: len(expected)] == expected
        after = snapshot.below(self.snapshot(stage), stage.destination.relative_to(stage.root))
        own = Path("My Patches/Evening Drone.adv")
        assert after[own] == before[own]
