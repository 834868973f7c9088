import collections
import contextlib
import os
import shutil
import signal
import threading
from pathlib import Path

import expectations
import snapshot
from expectations import HIDING
from fault import Fault, backups, files_in, lost
from gate import Gate
from waiting import wait_until
from walking import children, go_on

LEAST_KILLS = 60
OWN_FILES = 6
OWN_SIZE = 1 << 18
PAGES_BEFORE_SHEET = 3

# Who is at work on the stage's files: the installer itself, or the archiver with one of its tasks.
INSTALLER, PACKING = "installer", "packing"


class Killed(Fault):
    """The installer is killed before every single change that a run makes on the stage.

    Then it is run again. Nothing of the user's is lost, and the second run is complete. Where the
    archiver was at work, it is killed too every second time; otherwise it goes on to its end.
    """

    done = collections.Counter()
    counting = threading.Lock()

    def test_while_it_backs_up(self):
        self.kill_before_each_change_by(PACKING)

    def test_while_it_unpacks_the_suite(self):
        self.kill_before_each_change_by("morvella.zip")

    def test_while_it_unpacks_the_utility(self):
        self.kill_before_each_change_by("Tressimo.zip")

    def test_at_its_own_steps(self):
        self.kill_before_each_change_by(INSTALLER)

    def kill_before_each_change_by(self, worker):
        workers = self.workers()
        self.assertEqual(set(workers), {INSTALLER, PACKING, "morvella.zip", "Tressimo.zip"})
        self.assertGreaterEqual(len(workers), LEAST_KILLS, "kills of all four tests together")
        for number, at_work in enumerate(workers, 1):
            if at_work == worker:
                self.kill_before(number, worker)
        print(", ".join(f"{count} {what}" for what, count in self.done.items()), "so far")
        self.assertEqual(self.done["files lost"], 0)

    def workers(self):
        """Who makes each change of a whole run, in order."""
        stage, gate = self.make_stage_with_work(), Gate(self.folder / "gate", self.bundle)
        found = []
        with self.launch(stage, environment=gate.environment) as installer:
            start_installation(installer)
            while wait_for_change(installer, gate, len(found) + 1):
                found.append(at_work(installer))
                gate.allow(len(found))
        shutil.rmtree(stage.root)
        return found

    def kill_before(self, number, worker):
        """Before the change of this number, which the `worker` is about to make."""
        stage, gate = self.make_stage_with_work(), Gate(self.folder / "gate", self.bundle)
        before = self.snapshot(stage)
        gate.allow(number - 1)
        with self.launch(stage, environment=gate.environment) as installer:
            start_installation(installer)
            self.assertTrue(wait_for_change(installer, gate, number), "the installer has finished")
            self.assertEqual(at_work(installer), worker)
            archivers = children(installer.process.pid)
            installer.process.kill()
            installer.process.wait()
        end(archivers, gate, by_force=number % 2 == 0)
        self.count(kills=1)
        self.expect_complete_backups(stage, before)
        self.check_files(stage, before)
        self.run_again(stage)
        self.check_files(stage, before)
        shutil.rmtree(stage.root)

    def make_stage_with_work(self):
        """With as much of the user's own that packing it takes many steps."""
        stage = self.make_stage(previous=True, demo=False)
        for number in range(OWN_FILES):
            own = stage.destination / f"My Patches/Take {number}.wav"
            own.write_bytes(os.urandom(OWN_SIZE))
        return stage

    def expect_complete_backups(self, stage, before):
        """Whatever is named like a backup holds the whole old installation."""
        old = snapshot.below(before, stage.destination.relative_to(stage.root))
        for backup in backups(stage):
            self.assertEqual(snapshot.of_archive(backup), snapshot.placed(old, Path("Morvella")))

    def check_files(self, stage, before):
        missing = lost(stage, before)
        self.count(**{"files checked": len(files_in(before)), "files lost": len(missing)})
        self.assertEqual(missing, [], "lost files")

    def count(self, **events):
        with self.counting:
            self.done.update(events)

    def run_again(self, stage):
        log = self.run_to_the_end(stage)
        self.expect_criticals(log)
        self.assertEqual(log[-1], HIDING)
        suite = snapshot.below(expectations.suite(self.bundle), Path("Morvella"))
        self.assertEqual(suite, snapshot.of_folder(stage.destination))
        utility = snapshot.of_archive(self.bundle / "Resources/Tressimo.zip")
        self.assertEqual(utility, snapshot.of_folder(stage.utilities))


def start_installation(installer):
    page = installer.wait_for_first_page()
    for _ in range(PAGES_BEFORE_SHEET):
        page = go_on(installer, page)
    installer.key("Return")


def wait_for_change(installer, gate, number):
    """Waits until the change of this number is about to be made; whether there is one."""

    def finished():
        hidden = installer.stage.destination / ".Morvella.app"
        return HIDING in installer.log and hidden.exists()

    wait_until(lambda: gate.arrived >= number or finished(), f"change {number}", interval=0.001)
    return gate.arrived >= number


def at_work(installer):
    for command in children(installer.process.pid).values():
        return PACKING if command[1] == "-c" else Path(command[4]).name
    return INSTALLER


def end(archivers, gate, by_force):
    """Kills the archiver, or lets it work to its end."""
    for archiver in archivers:
        if by_force:
            os.kill(archiver, signal.SIGKILL)
        gate.open()
        wait_until(lambda: has_ended(archiver), "the archiver to end")


def has_ended(process):
    """Nobody may have taken its status yet."""
    with contextlib.suppress(FileNotFoundError):
        status = Path(f"/proc/{process}/stat").read_text()
        return status.rpartition(")")[2].split()[0] == "Z"
    return True
