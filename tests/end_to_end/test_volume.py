import pytest

from disturbed import Run, not_hidden, suite_refused
from expectations import (
    HANDLED,
    critical,
    expect_files,
    file_url,
    font_lines,
    installation_lines,
    installed,
    shader_lines,
    start_lines,
    utility_lines,
)
from fault import Fault
from messages import NO_BACKUP, NOT_TRASHED
from walking import nothing, walk


def gone_while_asked(bundle, stage):
    return [
        f"No previous installation of Morvella found at {stage.destination}",
        "Couldn't make a backup of current installation.",
        critical(NO_BACKUP),
        f"failed to move to trash:{file_url(stage.destination)}/",
        "couldn't move to trash.",
        critical(NOT_TRASHED),
        HANDLED,
    ]


class TestVolume(Fault):
    """The volume of the User Library goes away after the settings page has shown it."""

    @pytest.fixture(autouse=True)
    def copy(self, prepare):
        self.bundle = self.copy_bundle()  # Every user may read this one.

    def make_mounted_stage(self, **options):
        """A stage with a volume; only the system may make anything beside it."""
        stage = self.make_stage(unmounted=True, **options)
        stage.mount()
        self.user = self.ordinary_user(stage)
        stage.volume.parent.chmod(0o555)
        return stage

    def moved(self, stage, source, target):
        def move():
            stage.volume.parent.chmod(0o755)
            source.rename(target)
            stage.volume.parent.chmod(0o555)

        return move

    def run_while_it_goes(self, stage, *lines, pages):
        """It goes away when so many pages have been left, and comes back after the run."""
        going = self.moved(stage, stage.volume, stage.unmounted_volume)
        coming = self.moved(stage, stage.unmounted_volume, stage.volume)
        before = self.snapshot(stage)
        with self.untouched_elsewhere(stage):
            with self.launch(stage, user=self.user) as installer:
                assert walk(installer, [nothing] * pages + [going]) == 0
                self.expect_log(installer, *lines)
            assert list(stage.volume.parent.iterdir()) == []
            coming()
        self.expect_nothing_lost(stage, before)

    def expect_complete_run(self, stage):
        before = self.snapshot(stage)
        self.expect_criticals(self.run_to_the_end(stage, user=self.user))
        self.expect_nothing_lost(stage, before)
        pieces = installed(self.bundle, stage, fonts=(), shaders_to=None)
        assert pieces.items() <= self.snapshot(stage).items()

    def test_goes_away_before_the_installation(self):
        stage = self.make_mounted_stage()
        before = self.snapshot(stage)
        self.run_while_it_goes(
            stage,
            *start_lines(stage),
            *font_lines(self.bundle, stage),
            *suite_refused(self.bundle, stage),
            *utility_lines(self.bundle, stage),
            *shader_lines(self.bundle),
            *not_hidden(self.bundle, stage),
            pages=2,
        )
        expect_files(stage, {**before, **installed(self.bundle, stage, suite_to=None)})
        self.expect_complete_run(stage)

    def test_goes_away_while_the_previous_installation_is_asked_about(self):
        stage = self.make_mounted_stage(previous=True)
        run = Run(previous=gone_while_asked, suite=suite_refused, end=not_hidden)
        self.run_while_it_goes(stage, *run.log(self.bundle, stage), pages=3)
        self.expect_complete_run(stage)

    def test_goes_away_and_comes_back_before_the_installation(self):
        stage = self.make_mounted_stage()
        before = self.snapshot(stage)

        def go_and_come():
            self.moved(stage, stage.volume, stage.unmounted_volume)()
            self.moved(stage, stage.unmounted_volume, stage.volume)()

        self.expect_run(
            stage,
            *start_lines(stage),
            *installation_lines(self.bundle, stage),
            actions=[nothing, nothing, go_and_come],
            user=self.user,
        )
        expect_files(stage, {**before, **installed(self.bundle, stage)})
