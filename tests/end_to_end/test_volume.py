import pytest

from expectations import expect_files, installed
from log_lines import not_trashed_line, refused_line
from pages import NO_BACKUP, NOT_INSTALLED, NOT_TRASHED, PREVIOUS_INSTALLATION, SETTINGS
from folders import ordinary_user
from scenario import Scenario, expect_nothing_lost


class TestVolume(Scenario):
    """The volume of the User Library disappears after the settings page has shown it."""

    @pytest.fixture
    def stage(self, request):
        """A stage with a volume; the installer cannot create anything in its place."""
        stage = self.make_stage(unmounted=True, **getattr(request, "param", {}))
        stage.mount()
        self.user = ordinary_user(stage.root)
        stage.volume.parent.chmod(0o555)
        return stage

    def move(self, stage, source, target):
        stage.volume.parent.chmod(0o755)
        source.rename(target)
        stage.volume.parent.chmod(0o555)

    def expect_installed_next_time(self, stage):
        before = self.snapshot(stage)
        self.run(stage, user=self.user)
        expect_nothing_lost(stage, before)
        pieces = installed(self.bundle, stage, with_fonts=False, shaders_to=None)
        assert pieces.items() <= self.snapshot(stage).items()

    def run_and_unmount_at(self, stage, place, criticals, log):
        before = self.snapshot(stage)
        with self.untouched_elsewhere(stage):
            options = {"user": self.user, "elsewhere": True}
            unmount = {place: lambda: self.move(stage, stage.volume, stage.unmounted_volume)}
            self.run(stage, criticals=criticals, log=log, before=unmount, **options)
            assert list(stage.volume.parent.iterdir()) == []
            self.move(stage, stage.unmounted_volume, stage.volume)
        expect_nothing_lost(stage, before)
        return before

    def test_disappears_before_the_installation(self, stage):
        before = self.run_and_unmount_at(
            stage, SETTINGS, [NOT_INSTALLED], [refused_line("morvella.zip")]
        )
        expect_files(stage, {**before, **installed(self.bundle, stage, suite_to=None)})
        self.expect_installed_next_time(stage)

    @pytest.mark.parametrize("stage", [{"previous": True}], indirect=True)
    def test_disappears_during_the_question_about_the_previous_installation(self, stage):
        self.run_and_unmount_at(
            stage,
            PREVIOUS_INSTALLATION,
            [NO_BACKUP, NOT_TRASHED, NOT_INSTALLED],
            [
                f"No previous installation of Morvella found at {stage.destination}",
                not_trashed_line(stage.destination),
                refused_line("morvella.zip"),
            ],
        )
        self.expect_installed_next_time(stage)
