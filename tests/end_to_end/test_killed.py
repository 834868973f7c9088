import configparser
import os
import re
import shutil
import signal
import time
import urllib.parse
import zipfile
from pathlib import Path

import expectations
import snapshot
from expectations import HANDLED, HIDING
from scenario import Scenario
from waiting import wait_until

MEBIBYTE = 1 << 20
OWN_FILES = 16
SUITE_FILES = 32
UTILITY_FILES = 16


class Killed(Scenario):
    """The installer is killed in the middle of a run, then run again: nothing of the user's is lost.

    Each test kills it at many moments, on a stage of its own each time. Every second time the
    archiver is killed as well; otherwise it goes on until it notices.
    """

    kills = files_checked = files_lost = 0

    def setUp(self):
        super().setUp()
        self.heavy = self.copy_bundle()
        resources = self.heavy / "Resources"
        add_ballast(resources / "morvella.zip", "Morvella/Samples", SUITE_FILES)
        add_ballast(resources / "Tressimo.zip", "Samples", UTILITY_FILES)

    def test_while_it_waits_for_the_user(self):
        self.kill_at(*(stopping_at(page) for page in ("welcome", "licence", "settings", "sheet")))

    def test_while_it_backs_up(self):
        self.kill_at(*(backed_up(part / 20) for part in range(20)), archiver="-c", hits=12)

    def test_between_the_backup_and_the_installation(self):
        self.kill_at(*(after_backup(milliseconds / 1000) for milliseconds in range(0, 16, 2)))
        self.kill_at(*(written(line) for line in (HANDLED, "Font already installed:.*")))

    def test_while_it_installs_the_suite(self):
        self.kill_at(*(suite_unpacked(part / 20) for part in range(20)), archiver="-x", hits=12)

    def test_while_it_installs_the_utilities(self):
        self.kill_at(written("Deleting .*"))
        self.kill_at(*(utilities_unpacked(part / 8) for part in range(8)), archiver="-x", hits=4)

    def test_at_its_last_steps(self):
        self.kill_at(*(written(HIDING, milliseconds / 1000) for milliseconds in (0, 2, 5, 10, 50)))

    # One after the other

    def kill_at(self, *moments, archiver=None, hits=0):
        """`hits` is how often the archiver must have been at work with the option `archiver`."""
        hit = 0
        for number, moment in enumerate(moments):
            hit += self.kill_once(moment, number % 2 == 0) == archiver
        if archiver:
            self.assertGreaterEqual(hit, hits, f"kills while the archiver worked with {archiver}")
        print(
            f"so far {Killed.kills} kills, {Killed.files_checked} files checked,"
            f" {Killed.files_lost} files lost",
            flush=True,
        )

    def kill_once(self, moment, with_archiver):
        """Returns the first option of the archiver that was at work, if any was."""
        Killed.kills += 1
        stage = self.make_stage(f"stage-{Killed.kills}", previous=True)
        for number in range(OWN_FILES):
            own = stage.destination / f"My Patches/Take {number}.wav"
            own.write_bytes(os.urandom(MEBIBYTE))
        before = self.snapshot(stage)
        with self.launch(stage, bundle=self.heavy) as installer:
            moment(self, installer)
            self.assertIsNone(installer.process.poll(), "the installer ended before it was killed")
            option = kill(installer, with_archiver)
        self.expect_nothing_lost(stage, before)
        self.run_again(stage)
        self.expect_nothing_lost(stage, before)
        shutil.rmtree(stage.root)
        return option

    def run_again(self, stage):
        with self.launch(stage, bundle=self.heavy) as installer:
            asks = os.path.lexists(stage.destination)
            self.begin_installation(installer)
            if asks:
                installer.wait_for_stillness()
                installer.key("Return")
            installer.wait_for_line(HIDING)
            installer.wait_for_stillness()
            self.leave(installer)
            self.assertEqual([line for line in installer.log if line.startswith("critical")], [])
        resources = self.heavy / "Resources"
        utilities = snapshot.of_archive(resources / "Tressimo.zip")
        self.assertEqual(
            snapshot.below(expectations.suite(self.heavy), Path("Morvella")),
            snapshot.of_folder(stage.destination),
        )
        self.assertEqual(utilities, snapshot.of_folder(stage.utilities))

    def expect_nothing_lost(self, stage, before):
        files = {path: item for path, item in before.items() if item != snapshot.FOLDER}
        places = kept(stage)
        lost = [path for path, item in files.items() if (path, item) not in places]
        Killed.files_checked += len(files)
        Killed.files_lost += len(lost)
        self.assertEqual(lost, [])


# Moments: each walks there and returns when it has come


def stopping_at(page):
    def moment(test, installer):
        if page == "welcome":
            installer.wait_for_first_page()
        elif page == "licence":
            test.go_to_licence(installer)
        else:
            test.go_to_settings(installer)
        if page == "sheet":
            installer.press("beginInstallButton:")

    return moment


def once(happened, delay=0.0):
    """After "Continue" was pressed, as soon as `happened(installer)`, and `delay` seconds later."""

    def moment(test, installer):
        stopping_at("sheet")(test, installer)
        installer.key("Return")
        wait_until(lambda: happened(installer), "the moment to kill it", interval=0.0003)
        time.sleep(delay)

    return moment


def backed_up(part):
    def happened(installer):
        sizes = [zipped.stat().st_size for zipped in backups(installer.stage, "*")]
        return sum(sizes) >= part * OWN_FILES * MEBIBYTE if sizes else False

    return once(happened)


def after_backup(delay):
    return once(lambda installer: backups(installer.stage), delay)


def suite_unpacked(part):
    return unpacked(lambda stage: stage.destination / "Samples", part * SUITE_FILES)


def utilities_unpacked(part):
    return unpacked(lambda stage: stage.utilities / "Samples", part * UTILITY_FILES)


def unpacked(place, files):
    def happened(installer):
        folder = place(installer.stage)
        return folder.exists() and len(os.listdir(folder)) >= files

    return once(happened)


def written(pattern, delay=0.0):
    line = re.compile(pattern)
    return once(lambda installer: any(map(line.fullmatch, installer.log)), delay)


# Processes


def kill(installer, with_archiver):
    """Returns the first option of the archiver that was at work, if any was."""
    process = installer.process.pid
    children = Path(f"/proc/{process}/task/{process}/children").read_text().split()
    lines = [Path(f"/proc/{child}/cmdline").read_text().split("\0") for child in children]
    os.kill(process, signal.SIGKILL)
    if with_archiver:
        for child in children:
            os.kill(int(child), signal.SIGKILL)
    installer.process.wait()
    return next((line[1] for line in lines if Path(line[0]).name == "ditto"), None)


# Files


def add_ballast(archive, folder, count):
    """Adds files of a mebibyte each, so that unpacking takes a while."""
    with zipfile.ZipFile(archive, "a", zipfile.ZIP_STORED) as opened:
        for number in range(count):
            opened.writestr(f"{folder}/Take {number}.wav", os.urandom(MEBIBYTE))


def backups(stage, ending=""):
    return list(stage.user_library.glob(f"MorvellaBackup-*.zip{ending}"))


def kept(stage):
    """{(path, what is there)} of everything on the stage, in the Trash and in the backups.

    What is in the Trash or in a backup counts at the path from which it came.
    """
    places = set(snapshot.of_folder(stage.root).items())
    for information in (stage.trash / "info").glob("*.trashinfo"):
        parser = configparser.ConfigParser(interpolation=None)
        parser.read(information, encoding="utf-8")
        origin = Path(urllib.parse.unquote(parser["Trash Info"]["Path"])).relative_to(stage.root)
        trashed = stage.trash / "files" / information.stem
        places |= {(origin / path, item) for path, item in snapshot.of_folder(trashed).items()}
    library = stage.user_library.relative_to(stage.root)
    for backup in backups(stage):
        with zipfile.ZipFile(backup) as opened:
            assert opened.testzip() is None, f"{backup.name} is damaged"
        places |= {(library / path, item) for path, item in snapshot.of_archive(backup).items()}
    return places
