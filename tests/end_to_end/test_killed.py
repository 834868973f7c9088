import os
from pathlib import Path

import pytest

import expectations
import snapshot
from application import descendants, kill
from installer import is_idle
from pages import FINISH, PREVIOUS_INSTALLATION
from scenario import Scenario, expect_nothing_lost
from waiting import wait_until

# Enough of the user's own files that packing them takes many changes.
OWN_FILES, OWN_SIZE = 6, 1 << 18
# Each point of the sweep kills before every sixtieth change, so together they cover all changes.
POINTS = 60


class TestKilled(Scenario):
    """The installer is killed before each change that a run makes on the stage, and run again.

    No file of the user's is lost, and the second run is complete. For every second change a running
    archiver is killed too; otherwise it finishes.
    """

    @pytest.mark.sweep
    @pytest.mark.parametrize("first", range(1, POINTS + 1))
    def test_before_change(self, first):
        change = first
        while self.kill_before(change):
            change += POINTS
        assert change > POINTS, "a run makes fewer changes than there are points"

    def kill_before(self, change):
        """Returns whether the run makes that many changes."""
        stage = self.make_stage(f"stage {change}", previous=True, demo=False)
        for number in range(OWN_FILES):
            own = stage.destination / f"My Patches/Take {number}.wav"
            own.write_bytes(os.urandom(OWN_SIZE))
        before, gate = self.snapshot(stage), self.hold(stage)
        gate.allow(change - 1)
        with self.launch(stage, gate=gate) as installer:
            installer.begin_installation()
            installer.perform("Continue", at=PREVIOUS_INSTALLATION)
            installer.wait_for_state(
                lambda state: gate.is_holding or (is_idle(state) and state.place == FINISH),
                f"change {change}",
            )
            if not gate.is_holding:
                return False
            archiver = descendants(installer.process.pid)
            installer.process.kill()
            installer.process.wait()
        if change % 2 == 0:
            kill(archiver)
        gate.open()
        wait_until(lambda: not installer.has_running_children(), "the archiver to end")
        # Every file named like a backup must be a complete one.
        old = snapshot.below(before, stage.destination.relative_to(stage.root))
        for backup in expectations.backups(stage):
            assert snapshot.of_archive(backup) == snapshot.placed(old, Path("Morvella"))
        expect_nothing_lost(stage, before)
        self.run(stage)
        expect_nothing_lost(stage, before)
        suite = snapshot.below(expectations.suite(self.bundle), Path("Morvella"))
        assert suite == snapshot.of_folder(stage.destination)
        utility = snapshot.of_archive(self.bundle / "Resources/Tressimo.zip")
        assert utility == snapshot.of_folder(stage.utilities)
        return True
