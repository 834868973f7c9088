import os
import signal
from pathlib import Path

import pytest

import changes
import expectations
import snapshot
from descriptions import FINISH
from changes import INSTALLER, PACKING, at_work, start_installation, wait_for_change
from expectations import HIDING
from fault import Fault, backups
from gate import Gate
from processes import children, run_state
from waiting import wait_until

LEAST_KILLS = 60


def pytest_generate_tests(metafunc):
    """One point for each change."""
    if "number" in metafunc.fixturenames:
        known = changes.known_changes(metafunc.config.option.installer.resolve())
        points = [
            pytest.param(number, worker, marks=pytest.mark.sweep(worker), id=f"{number} {worker}")
            for number, worker in enumerate(known, 1)
        ]
        metafunc.parametrize(("number", "worker"), points)


class TestKilled(Fault):
    """The installer is killed before every single change that a run makes on the stage.

    Then it is run again. Nothing of the user's is lost, and the second run is complete. Where the
    archiver was at work, it is killed too every second time; otherwise it goes on to its end.
    """

    def test_all_changes_are_known(self, request):
        known = changes.known_changes(request.config.option.installer.resolve())
        assert set(known) == {INSTALLER, PACKING, "morvella.zip", "Tressimo.zip"}
        assert len(known) >= LEAST_KILLS
        gate, stage = self.make_gate(), changes.make_stage(self.folder / "stage")
        gate.open()
        with self.launch(stage, environment=gate.environment) as installer:
            start_installation(installer)
            installer.wait_for_page(FINISH)
        assert gate.arrived == len(known)

    def test_before_change(self, number, worker):
        stage, gate = changes.make_stage(self.folder / "stage"), self.make_gate()
        before = self.snapshot(stage)
        gate.allow(number - 1)
        with self.launch(stage, environment=gate.environment) as installer:
            start_installation(installer)
            assert wait_for_change(installer, gate, number), "the installer has finished"
            assert at_work(installer) == worker
            archivers = children(installer.process.pid)
            installer.process.kill()
            installer.process.wait()
        end(archivers, gate, by_force=number % 2 == 0)
        self.expect_complete_backups(stage, before)
        self.expect_nothing_lost(stage, before)
        self.run_again(stage)
        self.expect_nothing_lost(stage, before)

    def make_gate(self):
        return Gate(self.folder / "gate", self.bundle)

    def expect_complete_backups(self, stage, before):
        """Whatever is named like a backup holds the whole old installation."""
        old = snapshot.below(before, stage.destination.relative_to(stage.root))
        for backup in backups(stage):
            assert snapshot.of_archive(backup) == snapshot.placed(old, Path("Morvella"))

    def run_again(self, stage):
        log = self.run_to_the_end(stage)
        self.expect_criticals(log)
        assert log[-1] == HIDING
        suite = snapshot.below(expectations.suite(self.bundle), Path("Morvella"))
        assert suite == snapshot.of_folder(stage.destination)
        utility = snapshot.of_archive(self.bundle / "Resources/Tressimo.zip")
        assert utility == snapshot.of_folder(stage.utilities)


def end(archivers, gate, by_force):
    """Kills the archiver, or lets it work to its end."""
    if by_force:
        for archiver in archivers:
            os.kill(archiver, signal.SIGKILL)
    gate.open()
    wait_until(lambda: all(map(has_ended, archivers)), "the archiver to end")


def has_ended(process):
    """Nobody may have taken its status yet."""
    return run_state(process) in ("", "Z")
