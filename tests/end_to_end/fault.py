"""Shared by the tests in which something goes wrong: complete runs and their limits."""

import configparser
import contextlib
import os
import stat
import urllib.parse
import zipfile
from pathlib import Path

import snapshot
from expectations import BACKUP_NAME, FONTS, critical
from scenario import Scenario
from waiting import PATIENCE
from walking import walk


class Fault(Scenario):
    # For one step, in seconds.
    patience = PATIENCE

    def run_to_the_end(self, stage, *, actions=(), **options):
        """Answers everything with Return; returns the log."""
        with self.launch(stage, **options) as installer:
            assert walk(installer, actions, self.patience) == 0
            return installer.log

    def expect_run(self, stage, *lines, actions=(), **options):
        """Answers everything with Return; the whole log is `lines`, and nothing else is touched."""
        with self.untouched_elsewhere(stage), self.launch(stage, **options) as installer:
            assert walk(installer, actions, self.patience) == 0
            self.expect_log(installer, *lines)

    def expect_criticals(self, log, *messages):
        """Exactly these critical sheets were asked for, in this order."""
        asked = [line for line in log if line.startswith("critical error:")]
        assert asked == [critical(message) for message in messages]

    @contextlib.contextmanager
    def untouched_elsewhere(self, stage):
        """Nothing changes but what the installer is there to change: no name, content or mode."""
        before = with_modes(stage)
        yield
        after = with_modes(stage)
        new = set(stage.trash.relative_to(stage.root).parents) - before.keys()
        problems = snapshot.differences(
            without_own_places(before, stage), without_own_places(after, stage, new)
        )
        assert problems == [], "what the installer must not touch has changed"

    def expect_nothing_lost(self, stage, before):
        assert lost(stage, before) == [], "lost files"


def files_in(items):
    """The part of a snapshot that is no folder."""
    return {path: item for path, item in items.items() if item != snapshot.FOLDER}


def lost(stage, before):
    """The files of the snapshot `before` that are kept nowhere."""
    places = kept(stage)
    return [str(path) for path, item in files_in(before).items() if (path, item) not in places]


def with_modes(stage):
    """A snapshot of the whole stage that tells permissions too."""
    return {
        path: f"{item} {stat.S_IMODE((stage.root / path).lstat().st_mode):o}"
        for path, item in snapshot.of_folder(stage.root).items()
    }


def without_own_places(items, stage, new=()):
    """The snapshot without the installer's own places and without the `new` paths themselves."""
    places = [stage.destination, stage.utilities, stage.shared_data, stage.documents / "Morvella"]
    places += [stage.trash, stage.root / "opened-documents.txt"]
    places += [stage.fonts / font for font in FONTS]
    for place in places:
        items = snapshot.without(items, place.relative_to(stage.root))
    return {
        path: item
        for path, item in items.items()
        if path not in new and not BACKUP_NAME.fullmatch(path.name)
    }


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
        if not parser.sections():
            continue  # Killed before it was written, and so before anything moved.
        origin = Path(urllib.parse.unquote(parser["Trash Info"]["Path"])).relative_to(stage.root)
        trashed = stage.trash / "files" / information.stem
        if trashed.is_dir() and not trashed.is_symlink():
            found = snapshot.of_folder(trashed).items()
            places |= {(origin / path, item) for path, item in found}
        elif os.path.lexists(trashed):
            places.add((origin, snapshot.of_folder(trashed.parent)[Path(trashed.name)]))
    library = stage.user_library.relative_to(stage.root)
    for backup in backups(stage):
        with zipfile.ZipFile(backup) as opened:
            assert opened.testzip() is None, f"{backup.name} is damaged"
        places |= {(library / path, item) for path, item in snapshot.of_archive(backup).items()}
    return places
